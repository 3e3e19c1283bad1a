#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <string>

namespace mirrolet::platform::desktop::x11 {

/// Returns the label of a key in the present layout, in UTF-8. The label is the capital letter or sign of the
/// key, or the name of the key if the key types no character. Returns an empty label if the layout has no
/// symbol on the key.
std::string keyLabelOf(const X11Connection& connection, xcb_keycode_t key);

} // namespace mirrolet::platform::desktop::x11
