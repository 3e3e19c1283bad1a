#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <xcb/xcb.h>

namespace mirrolet::platform::desktop::x11 {

/// What a window manager left on the root window is only true while it lives: the window that it names must
/// exist and name itself. Two steps, so that each can travel with other requests; each step is taken once.
class WindowManagerCheck {
  public:
    /// Asks the root window.
    explicit WindowManagerCheck(X11Connection& connection);
    /// Waits for the root's answer, then asks the window that it names. False if it names none: no window
    /// manager.
    bool askManager();
    /// The window that the root names; only after askManager() gave true.
    [[nodiscard]] xcb_window_t window() const { return manager; }
    /// Waits for the manager's answer; only after askManager() gave true.
    bool managerLives();

  private:
    X11Connection& connection;
    xcb_get_property_cookie_t cookie;
    xcb_window_t manager = XCB_WINDOW_NONE;
};

} // namespace mirrolet::platform::desktop::x11
