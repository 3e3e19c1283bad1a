#pragma once

#include "platform/desktop/WindowList.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/windows/X11Applications.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Reads the windows on screen. All requests of a step are sent before the first reply is waited for, so
/// three round trips are enough for any usual number of windows. May be used by any thread.
class X11WindowList final : public WindowList {
  public:
    /// Tells whether a mirror shows the window now. Called on any thread, for each window that is read.
    using IsMirrored = std::function<bool(xcb_window_t)>;

    X11WindowList(X11Connection& connection, X11Applications& applications, IsMirrored isMirrored)
        : connection(connection), applications(applications), isMirrored(std::move(isMirrored)) {}

    /// If a mirrored window does not count as on screen, reads the windows a second time, 50 ms later. The
    /// window manager may be in the middle of a change of workspace, during which a window can be hidden for
    /// a moment.
    std::optional<std::vector<WindowRow>> onScreenWindows() override;

  private:
    class Reading;

    X11Connection& connection;
    X11Applications& applications;
    const IsMirrored isMirrored;
};

} // namespace mirrolet::platform::desktop::x11
