#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <xcb/xcb.h>

namespace mirrolet::platform::desktop::x11 {

/// Checks whether the window manager still runs. A window manager that has ended leaves its properties on the
/// root window. One of them names a window, which exists and names itself while the window manager runs. The
/// check has two steps, so that each can be sent together with other requests. Each step is taken once.
class WindowManagerCheck {
  public:
    /// Asks the root window.
    explicit WindowManagerCheck(X11Connection& connection);
    /// Waits for the root window's answer, then asks the window that the root names. False if the root names
    /// none, because there is no window manager then.
    bool askManager();
    /// The window that the root names. Only after askManager() has returned true.
    [[nodiscard]] xcb_window_t window() const { return manager; }
    /// Waits for the manager's answer. Only after askManager() has returned true.
    bool managerLives();

  private:
    X11Connection& connection;
    xcb_get_property_cookie_t cookie;
    xcb_window_t manager = XCB_WINDOW_NONE;
};

} // namespace mirrolet::platform::desktop::x11
