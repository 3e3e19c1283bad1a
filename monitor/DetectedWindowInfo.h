#pragma once

#include "platform/coregraphics/CGWindowList.h"
#include "platform/coregraphics/Geometry.h"

#include <optional>
#include <string>

namespace mirrolet {

/// A window that is offered to be mirrored. A plain value.
struct DetectedWindowInfo {
    platform::CGWindowID windowID = 0;
    platform::CGRect bounds; ///< In points from the desktop's top-left corner.
    std::string windowName;  ///< The window's title, which may be empty.
    std::string ownerName;
    std::optional<std::string> bundleIdentifier;
    /// True if WindowMonitor::likelyCallWindow() chose this window.
    bool isLikelyCall = false;

    friend bool operator==(const DetectedWindowInfo&, const DetectedWindowInfo&) = default;
};

} // namespace mirrolet
