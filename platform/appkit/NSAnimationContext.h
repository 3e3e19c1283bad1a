#pragma once

#include <functional>

namespace mirrolet::platform {

/// Groups changes that are animated together.
class NSAnimationContext {
  public:
    /// Runs `changes`; what they animate takes `duration` seconds.
    static void runAnimationGroup(double duration, const std::function<void()>& changes);
    /// Duration of the group that runs now, in seconds; 0 outside one.
    static double currentDuration();
};

} // namespace mirrolet::platform
