#pragma once

#include "platform/desktop/Pixels.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mirrolet::platform::desktop {

/// The window server's number of a window. 0 is no window.
using WindowNumber = std::uint32_t;

/// One window on screen, as the list gives it.
struct WindowRow {
    WindowNumber number = 0;
    PixelRect bounds; ///< In root coordinates, without an invisible client-side shadow.
    /// 0 for ordinary windows, above 0 for keep-above, notification and similar windows, below 0 for
    /// keep-below.
    int layer = 0;
    std::int32_t ownerPid = 0;        ///< The application number (see Applications), not always a kernel PID.
    std::string ownerName;            ///< UTF-8.
    std::optional<std::string> title; ///< UTF-8; none if the window has no title.
};

class WindowList {
  public:
    virtual ~WindowList() = default;
    /// Returns the windows of every application that the user sees or could see by moving others, front to
    /// back. Docks and desktops are left out. A mirrored window counts as on screen also while the window
    /// manager keeps it on another workspace. It counts while it is minimized too, if its image stays live.
    /// None if the list cannot be read. Any thread.
    virtual std::optional<std::vector<WindowRow>> onScreenWindows() = 0;
};

} // namespace mirrolet::platform::desktop
