#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <string>

namespace mirrolet::platform::desktop::x11 {

/// What the present layout has on a key, in UTF-8: a capital letter or sign, or the name of a key that types
/// none. Empty if it has nothing there.
std::string keyLabelOf(const X11Connection& connection, xcb_keycode_t key);

} // namespace mirrolet::platform::desktop::x11
