#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Returns the root window's children, bottom to top. Returns an empty vector if the server does not answer.
std::vector<xcb_window_t> stackingOrder(const X11Connection& connection);

/// Returns those of the top-level windows that are application windows, in the same order. A window counts as
/// an application window if it is viewable, if it is no menu, tooltip or notification, and if it is managed
/// or has a type that only applications use. Other override-redirect windows can be pop-ups and screen
/// lockers, which a panel must not obscure.
std::vector<xcb_window_t> applicationWindows(const X11Connection& connection,
                                             const std::vector<xcb_window_t>& topLevels);

} // namespace mirrolet::platform::desktop::x11
