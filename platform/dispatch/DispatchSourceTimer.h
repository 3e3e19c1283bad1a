#pragma once

#include "platform/dispatch/DispatchQueue.h"

#include <functional>
#include <memory>

namespace mirrolet::platform {

/// A repeating timer on a serial queue. The deadlines are absolute (start + n × interval), so the timer does
/// not drift. If several deadlines were missed, the timer fires once for all of them. The destructor does not
/// cancel the timer, so the owner calls cancel().
class DispatchSourceTimer {
  public:
    static std::shared_ptr<DispatchSourceTimer> make(const DispatchQueue& queue);

    /// Makes the timer fire at once and then every `repeating` seconds. Call this before resume().
    void scheduleNow(double repeating);
    void setEventHandler(std::function<void()> handler);
    void resume();
    /// Cancels the timer. After a cancel() on the timer's own queue, the handler is not started again. After
    /// a cancel() on another thread, one run of the handler may still be under way.
    void cancel();

  private:
    struct State;
    explicit DispatchSourceTimer(std::shared_ptr<State> state);
    std::shared_ptr<State> state;
};

} // namespace mirrolet::platform
