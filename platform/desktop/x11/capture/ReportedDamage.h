#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/foundation/Mutex.h"

#include <cstdint>
#include <functional>

namespace mirrolet::platform::desktop::x11 {

/// Returns whether the server had processed `request` when it sent the event. Sequence numbers wrap around.
inline bool isAfter(std::uint32_t request, std::uint32_t eventSequence) {
    return static_cast<std::int32_t>(eventSequence - request) >= 0;
}

/// Collects what DAMAGE events report about one window. All rectangles are in the window, without its border.
/// May be used by any thread.
class ReportedDamage {
  public:
    void add(const PixelRect& area, std::uint32_t eventSequence);
    /// Returns the box of all areas that were added since the last call.
    PixelRect take();

    /// Calls `redirect`, which requests the redirection and returns the request's sequence number. After the
    /// redirection the part `obscured` holds the pixels of other windows until the window repaints it.
    void awaitRepaint(const PixelRect& obscured, const std::function<std::uint32_t()>& redirect);
    /// Returns whether the window has repainted the obscured parts since it was redirected.
    [[nodiscard]] bool isRepainted() const;

  private:
    mutable Mutex damageMutex; ///< No other mutex is locked while it is held.
    PixelRect box MIRROLET_GUARDED_BY(damageMutex);
    std::uint32_t redirectSequence MIRROLET_GUARDED_BY(damageMutex) = 0;
    PixelRect awaited MIRROLET_GUARDED_BY(damageMutex);
    PixelRect repainted MIRROLET_GUARDED_BY(damageMutex); ///< Since the window was redirected.
};

} // namespace mirrolet::platform::desktop::x11
