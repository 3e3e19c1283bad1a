#pragma once

#include "platform/dispatch/DispatchQueue.h"

#include <functional>
#include <memory>

namespace mirrolet::platform {

/// A repeating timer on a serial queue. The deadlines are absolute (start + n × interval), so the timer does
/// not drift. Missed firings fold into one. The owner cancels the timer; the destructor does not.
class DispatchSourceTimer {
  public:
    static std::shared_ptr<DispatchSourceTimer> make(const DispatchQueue& queue);

    /// Fires at once, and then every `repeating` seconds, with no leeway. To be called before resume().
    void scheduleNow(double repeating);
    void setEventHandler(std::function<void()> handler);
    void resume();
    /// Cancels the timer. No firing begins after a call on the timer's own queue. After a call from another
    /// thread, one firing may still be running.
    void cancel();

  private:
    struct State;
    explicit DispatchSourceTimer(std::shared_ptr<State> state);
    std::shared_ptr<State> state;
};

} // namespace mirrolet::platform
