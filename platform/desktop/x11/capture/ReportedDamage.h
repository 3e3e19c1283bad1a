#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/foundation/Mutex.h"

#include <cstdint>
#include <functional>

namespace mirrolet::platform::desktop::x11 {

/// Whether the server had done this request when it sent an event. Sequence numbers wrap around.
inline bool isAfter(std::uint32_t request, std::uint32_t eventSequence) {
    return static_cast<std::int32_t>(eventSequence - request) >= 0;
}

/// Collects what DAMAGE events report about one window. All rectangles are in the window, without its border.
/// Any thread.
class ReportedDamage {
  public:
    void add(const PixelRect& area, std::uint32_t eventSequence);
    /// The box of all that was added since the last call.
    PixelRect take();

    /// Makes the request that redirects the window, which returns its sequence number. `obscured` holds the
    /// pixels of other windows from then on, until the window repaints these parts.
    void awaitRepaint(const PixelRect& obscured, const std::function<std::uint32_t()>& redirect);
    /// Whether the window has repainted the obscured parts since it was redirected.
    [[nodiscard]] bool isRepainted() const;

  private:
    mutable Mutex damageMutex; ///< No other mutex is locked while it is held.
    PixelRect box MIRROLET_GUARDED_BY(damageMutex);
    std::uint32_t redirectSequence MIRROLET_GUARDED_BY(damageMutex) = 0;
    PixelRect awaited MIRROLET_GUARDED_BY(damageMutex);
    PixelRect repainted MIRROLET_GUARDED_BY(damageMutex); ///< Since the window was redirected.
};

} // namespace mirrolet::platform::desktop::x11
