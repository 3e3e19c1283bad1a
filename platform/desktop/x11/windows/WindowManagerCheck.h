#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <xcb/xcb.h>

namespace mirrolet::platform::desktop::x11 {

/// Checks whether the window manager still runs. Its properties on the root window are no proof, because they
/// remain when it has ended. One of them names its check window, which exists only while it runs. The check
/// window itself has a property that contains its own number. If another window gets the number later, that
/// window lacks the property, and so is not mistaken for the check window.
///
/// The check has two steps, askManager() and then managerLives(), so that the caller can send other requests
/// together with each step. Each step must be called at most once.
class WindowManagerCheck {
  public:
    /// Requests the root window's property. Does not wait for the reply.
    explicit WindowManagerCheck(X11Connection& connection);
    /// Waits for the root window's property, and then requests the property of the check window. Returns
    /// false if the root window names no check window, because no window manager runs then.
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
