#include "platform/desktop/x11/capture/ReportedDamage.h"

#include "platform/desktop/PixelRects.h"

#include <utility>

namespace mirrolet::platform::desktop::x11 {

void ReportedDamage::add(const PixelRect& area, std::uint32_t eventSequence) {
    const MutexLock lock(damageMutex);
    box = united(box, area);
    if (isAfter(redirectSequence, eventSequence))
        repainted = united(repainted, area);
}

PixelRect ReportedDamage::take() {
    const MutexLock lock(damageMutex);
    return std::exchange(box, {});
}

/// Calls `redirect` with the mutex locked, because another thread may read the request's first events before
/// `redirect` returns. That thread then waits in add() until the request's sequence number is stored.
void ReportedDamage::awaitRepaint(const PixelRect& obscured, const std::function<std::uint32_t()>& redirect) {
    const MutexLock lock(damageMutex);
    redirectSequence = redirect();
    awaited = obscured;
    repainted = {};
}

bool ReportedDamage::isRepainted() const {
    const MutexLock lock(damageMutex);
    return contains(repainted, awaited);
}

} // namespace mirrolet::platform::desktop::x11
