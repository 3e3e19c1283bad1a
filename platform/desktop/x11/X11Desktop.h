#pragma once

#include "platform/desktop/Desktop.h"

#include <functional>
#include <memory>
#include <string>

namespace mirrolet::platform::desktop::x11 {

/// Connects to $DISPLAY and makes the X11 desktop. Returns nullptr on failure (no display, no server) and
/// puts the reason into `problem`, one line. Calls `serverLost` once, on the connection's own thread, when
/// the server goes away later.
std::unique_ptr<Desktop> makeX11Desktop(std::string& problem, std::function<void()> serverLost);

} // namespace mirrolet::platform::desktop::x11
