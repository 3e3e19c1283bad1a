#pragma once

#include "platform/dispatch/DispatchQueue.h"

#include <functional>
#include <memory>

namespace mirrolet::platform {

/// A repeating timer on a serial queue. Its firings sit on absolute deadlines (start + n × interval): no
/// drift, and firings that were missed fold into one. The owner cancels it; its destructor does not.
class DispatchSourceTimer {
  public:
    static std::shared_ptr<DispatchSourceTimer> make(const DispatchQueue& queue);

    /// First firing now, then every `repeating` seconds. Leeway is always zero. Before resume().
    void scheduleNow(double repeating);
    void setEventHandler(std::function<void()> handler);
    void resume();
    /// No firing begins after this returns on the timer's own queue; one may be running if called from
    /// elsewhere.
    void cancel();

  private:
    struct State;
    explicit DispatchSourceTimer(std::shared_ptr<State> state);
    std::shared_ptr<State> state;
};

} // namespace mirrolet::platform
