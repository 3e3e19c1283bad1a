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
    /// Calls `receive` during each send(), until the result is destroyed or cancelled. The object has not
    /// changed yet during the call.
    [[nodiscard]] AnyCancellable sink(std::function<void()> receive);
    /// At each send(), posts a task that calls `receive`, until the result is destroyed or cancelled. The
    /// queue runs the task after the change, so `receive` sees the changed object.
    [[nodiscard]] AnyCancellable sinkOn(DispatchQueue& queue, std::function<void()> receive);

  private:
    struct State;
    std::shared_ptr<State> state;
};

} // namespace mirrolet::platform
