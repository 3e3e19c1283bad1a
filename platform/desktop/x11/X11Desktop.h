#pragma once

#include "platform/desktop/Desktop.h"

#include <memory>
#include <string>

namespace mirrolet::platform::desktop::x11 {

/// Connects to $DISPLAY and makes the X11 desktop. On failure (no display, no server) returns nothing and says why in
/// `problem`, one line. When the server is lost later, the program ends with one line and a failing exit status, after
/// `beforeExit` has run on another thread.
std::unique_ptr<Desktop> makeX11Desktop(std::string& problem, std::function<void()> beforeExit);

} // namespace mirrolet::platform::desktop::x11
