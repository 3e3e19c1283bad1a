#pragma once

#include "platform/desktop/Pixels.h"

namespace mirrolet::platform::desktop::x11 {

/// Recognises continuous damage, which is a window that changes nearly everywhere on every tick, as a playing
/// video does. The damage of the next ticks is then assumed instead of being reported, because each report
/// wakes a thread. After these ticks the reports are needed again for a moment, to see whether the window
/// still changes.
class ContinuousDamage {
  public:
    /// A tick passed without any damage.
    void interrupt() { continuousTicks = 0; }
    /// A tick with this damaged box, of a window of this size. True if the following ticks are assumed.
    bool add(const PixelRect& box, PixelSize window);

    [[nodiscard]] bool isAssumed() const { return assumedTicks > 0; }
    /// Counts one tick down. True if this tick was the last one with assumed damage.
    bool countDown() { return assumedTicks > 0 && --assumedTicks == 0; }
    /// Assumes no further ticks. True if there were any left.
    bool stopAssuming();

  private:
    int continuousTicks = 0;
    int assumedTicks = 0; ///< To come.
};

} // namespace mirrolet::platform::desktop::x11
