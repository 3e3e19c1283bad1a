#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// The root window's children, bottom to top. Empty if the server does not answer.
std::vector<xcb_window_t> stackingOrder(const X11Connection& connection);

/// Those of some root children that are application windows: viewable, and a client of the window manager (in
/// its frame or by itself) or of a type that says so. Left out are menus, tooltips, notifications and the
/// like, and override-redirect windows of no telling type: pop-ups and screen lockers, which a panel must not
/// cover. Order kept.
std::vector<xcb_window_t> applicationWindows(const X11Connection& connection,
                                             const std::vector<xcb_window_t>& topLevels);

} // namespace mirrolet::platform::desktop::x11
