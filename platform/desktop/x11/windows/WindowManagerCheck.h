#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <xcb/xcb.h>

namespace mirrolet::platform::desktop::x11 {

/// Checks whether the window manager still runs. A window manager that has ended leaves its properties on the
/// root window. One of these properties names a window of the window manager. That window exists only while
/// the window manager runs, and has a property that names the window itself. A later window with the same
/// number lacks this property and so is not mistaken for that window.
///
/// The check has two steps, askManager() and then managerLives(), so that the caller can send other requests
/// together with each step. Each step must be called at most once.
class WindowManagerCheck {
  public:
    /// Requests the root window's property. Does not wait for the reply.
    explicit WindowManagerCheck(X11Connection& connection);
    /// Waits for the root window's property, and then requests the property of the window that the root
    /// window names. Returns false if the root window names no window, because no window manager runs then.
    bool askManager();
    /// Returns the window manager's window that the root window's property names. Must be called only after
    /// askManager() has returned true.
    [[nodiscard]] xcb_window_t window() const { return manager; }
    /// Waits for the property of the window manager's window and returns whether the window manager runs.
    /// Must be called only after askManager() has returned true.
    bool managerLives();

  private:
    X11Connection& connection;
    xcb_get_property_cookie_t cookie;
    xcb_window_t manager = XCB_WINDOW_NONE;
};

} // namespace mirrolet::platform::desktop::x11
