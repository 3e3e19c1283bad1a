#pragma once

#include "platform/coregraphics/Geometry.h"

#include <memory>

namespace mirrolet::platform {

class NSResponder;

namespace NSTrackingAreaOptions {
inline constexpr unsigned inVisibleRect = 0x200;
// These two options have no effect, because the owner of an area is always told when the pointer enters or
// leaves the area.
inline constexpr unsigned mouseEnteredAndExited = 0x01;
inline constexpr unsigned activeAlways = 0x80;
} // namespace NSTrackingAreaOptions

/// A part of a view. The area's owner is told when the pointer enters or leaves the area. With
/// `inVisibleRect` the area is the whole view.
struct NSTrackingArea {
    NSRect rect; ///< In the view's coordinates.
    unsigned options = 0;
    std::weak_ptr<NSResponder> owner;
};

} // namespace mirrolet::platform
