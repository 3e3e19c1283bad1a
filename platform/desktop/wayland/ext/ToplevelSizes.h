#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/wayland/ext/Toplevel.h"
#include "platform/foundation/Mutex.h"

#include <chrono>
#include <map>
#include <optional>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

/// Remembers the sizes of the windows, and decides when a size has to be measured. The lists do not tell
/// sizes. Only a capture session does, and an open session costs the compositor time. A size is therefore
/// measured when a window appears, after its description has changed, and once a minute. Makes no request
/// itself. Any thread.
class ToplevelSizes {
  public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// Returns the windows whose size has to be measured now. measured() is to be called for each of them
    /// later. `candidates` are all windows that could be mirrored. The sizes of others are forgotten.
    std::vector<WindowNumber> due(const std::vector<Toplevel>& candidates, TimePoint now);
    /// Notes a window's size in device pixels, or none if the size could not be measured.
    void measured(WindowNumber number, std::optional<PixelSize> size, TimePoint now);
    /// Returns the last known size, or none if there is none yet.
    [[nodiscard]] std::optional<PixelSize> sizeOf(WindowNumber number) const;

  private:
    struct Known {
        Toplevel asked; ///< The window's description when a measurement was asked for.
        std::optional<PixelSize> size;
        TimePoint since; ///< When the measurement began or, if it has ended, when it ended.
        bool isMeasuring = false;
    };
    [[nodiscard]] static bool isDue(const Known& known, const Toplevel& window, TimePoint now);

    mutable Mutex sizesMutex;
    std::map<WindowNumber, Known> sizes MIRROLET_GUARDED_BY(sizesMutex);
};

} // namespace mirrolet::platform::desktop::wayland
