#pragma once

#include "platform/desktop/Pixels.h"

namespace mirrolet::platform::desktop::x11 {

/// Recognises a window that changes nearly everywhere on every tick, as a playing video does. The damage of
/// the next ticks is then assumed and not reported, because each report wakes a thread. After the assumed
/// ticks, a few reports are needed again to see whether the window still changes.
class ContinuousDamage {
  public:
    /// Notes that a tick passed without any damage.
    void interrupt() { continuousTicks = 0; }
    /// Notes a tick with damage in `box` of a window of size `window`. Returns true if damage is assumed from
    /// the next tick on.
    bool add(const PixelRect& box, PixelSize window);

    [[nodiscard]] bool isAssumed() const { return assumedTicks > 0; }
    /// Counts one assumed tick down. Returns true if this tick was the last one with assumed damage.
    bool countDown() { return assumedTicks > 0 && --assumedTicks == 0; }
    /// Stops assuming damage. Returns true if any assumed ticks were left.
    bool stopAssuming();

  private:
    int continuousTicks = 0;
    int assumedTicks = 0; ///< The number of ticks to come with assumed damage.
};

} // namespace mirrolet::platform::desktop::x11
