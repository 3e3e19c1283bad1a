#pragma once

#include "platform/appkit/NSColor.h"
#include "platform/coregraphics/Geometry.h"

#include <optional>

namespace mirrolet::platform {

/// The background and the border of a view. The background lies under the view's own drawing. The border lies
/// over the view's subviews.
struct CALayer {
    CGFloat cornerRadius = 0;
    bool masksToBounds = false;
    CGFloat borderWidth = 0;
    NSColor borderColor = NSColor::black();
    std::optional<NSColor> backgroundColor;
};

} // namespace mirrolet::platform
