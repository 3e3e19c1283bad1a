#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Returns the root window's children, bottom to top. Returns an empty vector if the server does not answer.
std::vector<xcb_window_t> stackingOrder(const X11Connection& connection);

/// Returns the application windows among these children of the root, in the same order. An application window
/// is viewable, and either managed by the window manager (in a frame or not) or of a type that only
/// applications use. Menus, tooltips and notifications are left out. So are override-redirect windows without
/// such a type, because they can be pop-ups and screen lockers, which a panel must not obscure.
std::vector<xcb_window_t> applicationWindows(const X11Connection& connection,
                                             const std::vector<xcb_window_t>& topLevels);

} // namespace mirrolet::platform::desktop::x11
