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
    PixelRect bounds; ///< The visible part (an invisible client-side shadow left out), root coordinates.
    /// 0 for ordinary windows, above 0 for keep-above, notification and similar ones, below 0 for keep-below.
    int layer = 0;
    std::int32_t ownerPid = 0;        ///< The application number (see Applications), not always a kernel PID.
    std::string ownerName;            ///< UTF-8.
    std::optional<std::string> title; ///< UTF-8; none where the window has no title.
};

class WindowList {
  public:
    virtual ~WindowList() = default;
    /// The windows of every application that the user sees or could see by moving others, without docks and
    /// desktops, front to back. A mirrored window counts as on screen also while the window manager keeps it
    /// on another workspace, and while it is minimized where its image stays live. None if the list cannot be
    /// read. Any thread.
    virtual std::optional<std::vector<WindowRow>> onScreenWindows() = 0;
};

} // namespace mirrolet::platform::desktop
