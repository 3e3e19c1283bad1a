#pragma once

#include "platform/appkit/NSColor.h"
#include "platform/coregraphics/Geometry.h"

#include <optional>

namespace mirrolet::platform {

/// A background and a border that a view has besides its own drawing. The background lies under the drawing,
/// the border over the subviews.
struct CALayer {
    CGFloat cornerRadius = 0;
    bool masksToBounds = false;
    CGFloat borderWidth = 0;
    NSColor borderColor = NSColor::black();
    std::optional<NSColor> backgroundColor;
};

} // namespace mirrolet::platform
