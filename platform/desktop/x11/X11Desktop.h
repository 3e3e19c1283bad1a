#pragma once

#include "platform/desktop/Desktop.h"

#include <functional>
#include <memory>
#include <string>

namespace mirrolet::platform::desktop::x11 {

/// Connects to $DISPLAY and makes the X11 desktop. On failure (no display, no server) returns nothing and
/// says why in `problem`, one line. `serverLost` is called once, on the connection's own thread, when the
/// server goes away later.
std::unique_ptr<Desktop> makeX11Desktop(std::string& problem, std::function<void()> serverLost);

} // namespace mirrolet::platform::desktop::x11
