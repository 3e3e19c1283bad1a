#pragma once

#include "platform/desktop/Desktop.h"
#include "platform/desktop/wayland/session/WaylandConnection.h"

#include <memory>
#include <string>

namespace mirrolet::platform::desktop::wayland {

/// Makes the desktop of a session whose compositor has the standard protocols, such as sway and labwc.
/// Windows and images come from the compositor. The desktop `shown` shows the mirror and the prompt, and has
/// the hot keys. offersToplevelCapture() must be true for the connection, and the connection must not have
/// started. Sets `report` to a line for the log, which says what was put together.
std::unique_ptr<Desktop> makeExtDesktop(std::unique_ptr<Desktop> shown,
                                        std::unique_ptr<WaylandConnection> connection, std::string& report);

} // namespace mirrolet::platform::desktop::wayland
