#include "platform/desktop/x11/capture/ContinuousDamage.h"

#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr int ticksUntilContinuous = 15;
constexpr int ticksAssumed = 15;
/// The number of ticks in a row that must report damage nearly everywhere before damage is assumed once more.
/// One tick would not be enough, because the server reports the whole window as damaged whenever the reports
/// are started.
constexpr int ticksToConfirm = 3;

} // namespace

bool ContinuousDamage::add(const PixelRect& box, PixelSize window) {
    const bool nearlyAll = 4LL * box.width * box.height >= 3LL * window.width * window.height;
    continuousTicks = nearlyAll ? continuousTicks + 1 : 0;
    if (continuousTicks < ticksUntilContinuous)
        return false;
    continuousTicks = ticksUntilContinuous - ticksToConfirm;
    assumedTicks = ticksAssumed;
    return true;
}

bool ContinuousDamage::stopAssuming() {
    return std::exchange(assumedTicks, 0) > 0;
}

} // namespace mirrolet::platform::desktop::x11
