#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

namespace mirrolet::platform::desktop::x11 {

/// Asks the window manager to give a managed window the focus and to put the window in front
/// (_NET_ACTIVE_WINDOW). The request counts as made by the user, because a window manager may refuse a
/// request that counts as made by an application. Returns at once.
void requestActivation(const X11Connection& connection, xcb_window_t window);

} // namespace mirrolet::platform::desktop::x11
