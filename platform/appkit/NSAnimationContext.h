#pragma once

#include <functional>

namespace mirrolet::platform {

/// A group of changes that are animated together.
class NSAnimationContext {
  public:
    /// Runs `changes`. Every animation that `changes` starts takes `duration` seconds.
    static void runAnimationGroup(double duration, const std::function<void()>& changes);
    /// Returns the duration of the running group in seconds, or 0 outside a group.
    static double currentDuration();
};

} // namespace mirrolet::platform
