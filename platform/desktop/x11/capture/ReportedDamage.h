#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/foundation/Mutex.h"

#include <cstdint>
#include <functional>

namespace mirrolet::platform::desktop::x11 {

/// Returns whether the server had processed `request` when it sent the event. Both arguments are sequence
/// numbers, which may wrap around.
inline bool isAfter(std::uint32_t request, std::uint32_t eventSequence) {
    return static_cast<std::int32_t>(eventSequence - request) >= 0;
}

/// Collects what DAMAGE events report about one window. All rectangles are relative to the window without its
/// border. May be used by any thread.
class ReportedDamage {
  public:
    void add(const PixelRect& area, std::uint32_t eventSequence);
    /// Returns the box of all areas that were added since the last call.
    PixelRect take();

    /// Calls `redirect`, which must request the redirection and return the request's sequence number. The
    /// redirected window's pixmap holds pixels of other windows in the part `obscured`, so isRepainted()
    /// returns false until the window has repainted this part.
    void awaitRepaint(const PixelRect& obscured, const std::function<std::uint32_t()>& redirect);
    /// Returns whether the window has repainted the obscured part since it was redirected.
    [[nodiscard]] bool isRepainted() const;

  private:
    mutable Mutex damageMutex; ///< No other mutex is locked while this one is held.
    PixelRect box MIRROLET_GUARDED_BY(damageMutex);
    std::uint32_t redirectSequence MIRROLET_GUARDED_BY(damageMutex) = 0;
    PixelRect awaited MIRROLET_GUARDED_BY(damageMutex);
    PixelRect repainted MIRROLET_GUARDED_BY(damageMutex); ///< Box of the damage since the redirection.
};

} // namespace mirrolet::platform::desktop::x11
