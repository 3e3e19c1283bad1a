#pragma once

#include <functional>
#include <memory>

namespace mirrolet::platform {

/// A one-shot timer on the main run loop. The run loop keeps the timer alive, so the timer fires even if
/// nobody else owns it any more. invalidate() stops the timer. Main thread only.
class NSTimer {
  public:
    static std::shared_ptr<NSTimer> scheduledTimer(double seconds, std::function<void()> block);
    void invalidate();

  private:
    struct State;
    explicit NSTimer(std::shared_ptr<State> state);
    std::shared_ptr<State> state;
};

} // namespace mirrolet::platform
