#pragma once

#include "platform/desktop/Desktop.h"

#include <functional>
#include <memory>
#include <string>

namespace mirrolet::platform::desktop::x11 {

/// Connects to $DISPLAY and makes the X11 desktop. On failure, returns nullptr and sets `problem` to the
/// reason in one line. Calls `serverLost` once if the connection breaks later, on the connection's own
/// thread.
std::unique_ptr<Desktop> makeX11Desktop(std::string& problem, std::function<void()> serverLost);

} // namespace mirrolet::platform::desktop::x11
