#pragma once

#include "platform/desktop/Pixels.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mirrolet::platform::desktop {

/// The number that the window server gave to a window. 0 stands for no window.
using WindowNumber = std::uint32_t;

/// Describes one window of the window list.
struct WindowRow {
    WindowNumber number = 0;
    PixelRect bounds; ///< In root-window coordinates, without a shadow that the client draws.
    /// The layer is 0 for ordinary windows. It is above 0 for windows that are kept above others, such as
    /// notifications, and below 0 for windows that are kept below others.
    int layer = 0;
    std::int32_t ownerPid = 0;        ///< The owner's number, as in Application::pid.
    std::string ownerName;            ///< UTF-8.
    std::optional<std::string> title; ///< UTF-8; none if the window has no title.
};

class WindowList {
  public:
    virtual ~WindowList() = default;
    /// Returns the windows of all applications that are on screen, front to back. Obscured windows are
    /// included. Docks and the desktop's background windows are left out. A mirrored window also counts as on
    /// screen while it is on another workspace, and while it is minimized but still draws. Returns none if
    /// the list cannot be read. May be called on any thread.
    virtual std::optional<std::vector<WindowRow>> onScreenWindows() = 0;
};

} // namespace mirrolet::platform::desktop
