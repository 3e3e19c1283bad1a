#pragma once

#include "platform/coregraphics/Geometry.h"

#include <optional>

namespace mirrolet::platform {

/// Describes a screen as it was when this object was made. The rectangles are in screen coordinates (y
/// upwards from the main screen's bottom-left corner).
struct NSScreen {
    NSRect frame;
    NSRect visibleFrame; ///< The frame without the space of docks.

    /// Returns the main screen, or none while no screen is connected.
    static std::optional<NSScreen> main();
};

} // namespace mirrolet::platform
