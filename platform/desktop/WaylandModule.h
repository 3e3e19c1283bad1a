#pragma once

#include "platform/desktop/Desktop.h"

#include <memory>
#include <string>

namespace mirrolet::platform::desktop {

/// A desktop that is put together from the parts of two backends.
struct WaylandParts {
    std::unique_ptr<Desktop> desktop;
    std::string report; ///< One line for the log: which session was found, and what is missing in it.
};

/// The type of the function `mirroletWaylandParts`, which the Wayland module exports. The function sets
/// `parts`. `shown` is the X11 backend. It shows the windows of this program, and also does whatever the
/// Wayland session does not offer.
using MakeWaylandParts = void(std::unique_ptr<Desktop> shown, WaylandParts& parts);

/// Loads the Wayland backend and lets it put the desktop together. The backend is a module of its own, so
/// that its libraries are loaded in Wayland sessions only. `folder` is the module's folder, relative to the
/// program's folder. A module in the program's folder itself is preferred. If there is no module, the result
/// is `shown` itself.
WaylandParts loadWaylandModule(const std::string& folder, std::unique_ptr<Desktop> shown);

} // namespace mirrolet::platform::desktop
