#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <string>

namespace mirrolet::platform::desktop::x11 {

/// Label of a key in the present layout, in UTF-8: its capital letter or sign, or its name if the key types
/// no character. Empty if the layout has no symbol on the key.
std::string keyLabelOf(const X11Connection& connection, xcb_keycode_t key);

} // namespace mirrolet::platform::desktop::x11
