#pragma once

#include "platform/appkit/NSColor.h"
#include "platform/coregraphics/Geometry.h"

#include <optional>

namespace mirrolet::platform {

/// What a layer-backed view shows besides its own drawing: the background under it, the border over its
/// subviews.
struct CALayer {
    CGFloat cornerRadius = 0;
    bool masksToBounds = false;
    CGFloat borderWidth = 0;
    NSColor borderColor = NSColor::black();
    std::optional<NSColor> backgroundColor;
};

} // namespace mirrolet::platform
