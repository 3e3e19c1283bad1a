#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <xcb/xcb.h>

namespace mirrolet::platform::desktop::x11 {

/// Checks whether the window manager still runs. A window manager that has ended leaves its properties on the
/// root window. One of these properties names a window of the manager. That window exists, and has a property
/// that names itself, only while the window manager runs. The check has two steps, so that each step can be
/// sent together with other requests. Each step is taken once.
class WindowManagerCheck {
  public:
    /// Asks the root window.
    explicit WindowManagerCheck(X11Connection& connection);
    /// Waits for the root window's answer, then asks the window that the root names. Returns false if the
    /// root names no window, because there is no window manager then.
    bool askManager();
    /// Returns the window that the root names. Must be called only after askManager() has returned true.
    [[nodiscard]] xcb_window_t window() const { return manager; }
    /// Waits for the answer about the manager's window and returns whether the manager runs. Must be called
    /// only after askManager() has returned true.
    bool managerLives();

  private:
    X11Connection& connection;
    xcb_get_property_cookie_t cookie;
    xcb_window_t manager = XCB_WINDOW_NONE;
};

} // namespace mirrolet::platform::desktop::x11
