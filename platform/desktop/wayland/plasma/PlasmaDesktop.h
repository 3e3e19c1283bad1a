#pragma once

#include "platform/desktop/Desktop.h"
#include "platform/desktop/wayland/session/WaylandConnection.h"

#include <memory>
#include <string>

namespace mirrolet::platform::desktop::wayland {

/// Returns whether the compositor is KWin and lets this program see the windows. KWin offers the protocols
/// only to a program whose desktop entry asks for them.
bool offersPlasmaWindows(const WaylandConnection& connection);

/// Returns whether the compositor is KWin. KWin is recognized by its protocol for virtual desktops, because
/// KWin offers that protocol to every program.
bool isKWin(const WaylandConnection& connection);

/// Makes the desktop of a Plasma session. Windows, images and hot keys come from KWin. The desktop `shown`
/// shows the mirror and the prompt. offersPlasmaWindows() must be true for the connection, and the connection
/// must not have started.
std::unique_ptr<Desktop> makePlasmaDesktop(std::unique_ptr<Desktop> shown,
                                           std::unique_ptr<WaylandConnection> connection);

} // namespace mirrolet::platform::desktop::wayland
