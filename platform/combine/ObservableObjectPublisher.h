#pragma once

#include "platform/combine/AnyCancellable.h"

#include <functional>
#include <map>
#include <memory>

namespace mirrolet::platform {

class DispatchQueue;

/// Announces that an object is about to change. Main thread only.
class ObservableObjectPublisher {
  public:
    ObservableObjectPublisher();

    /// Calls every subscriber, in the order they subscribed. A subscriber may cancel itself or others
    /// meanwhile.
    void send();
    /// Calls `receive` at once for each announcement, until the result is destroyed or cancelled.
    [[nodiscard]] AnyCancellable sink(std::function<void()> receive);
    /// The same, but each call is posted to the queue, runs on a later turn and sees the object after the
    /// change.
    [[nodiscard]] AnyCancellable sinkOn(DispatchQueue& queue, std::function<void()> receive);

  private:
    struct State;
    std::shared_ptr<State> state;
};

} // namespace mirrolet::platform
