#pragma once

#include "platform/coregraphics/Geometry.h"

#include <optional>

namespace mirrolet::platform {

/// A screen at the moment of the call, in screen coordinates (y upwards from the main screen's
/// bottom-left).
struct NSScreen {
    NSRect frame;
    NSRect visibleFrame; ///< The frame without the desktop's docks.

    /// Returns the main screen, or nothing while no screen is connected.
    static std::optional<NSScreen> main();
};

} // namespace mirrolet::platform
