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

    /// Calls every subscriber in the order of subscription. A subscriber may cancel its own or other
    /// subscriptions during the call.
    void send();
    /// Calls `receive` at once for each announcement, until the result is destroyed or cancelled.
    [[nodiscard]] AnyCancellable sink(std::function<void()> receive);
    /// Posts a call of `receive` to the queue for each announcement, until the result is destroyed or
    /// cancelled. The call runs on a later turn, so `receive` sees the object after the change.
    [[nodiscard]] AnyCancellable sinkOn(DispatchQueue& queue, std::function<void()> receive);

  private:
    struct State;
    std::shared_ptr<State> state;
};

} // namespace mirrolet::platform
