#pragma once

#include "platform/coregraphics/CGWindowList.h"
#include "platform/coregraphics/Geometry.h"

#include <optional>
#include <string>

namespace mirrolet {

/// A window that is offered to be mirrored. A plain value.
struct DetectedWindowInfo {
    platform::CGWindowID windowID = 0;
    platform::CGRect bounds; ///< Points, from the top-left of the desktop.
    std::string windowName;  ///< The title, or empty.
    std::string ownerName;
    std::optional<std::string> bundleIdentifier;
    /// True if the call rule chose this window, by its title or as the second-largest window.
    bool isLikelyCall = false;

    friend bool operator==(const DetectedWindowInfo&, const DetectedWindowInfo&) = default;
};

} // namespace mirrolet
