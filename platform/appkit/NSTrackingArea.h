#pragma once

#include "platform/coregraphics/Geometry.h"

#include <memory>

namespace mirrolet::platform {

class NSResponder;

namespace NSTrackingAreaOptions {
inline constexpr unsigned inVisibleRect = 0x200;
// These two options have no effect, because every area's owner is told of entering and leaving at all times.
inline constexpr unsigned mouseEnteredAndExited = 0x01;
inline constexpr unsigned activeAlways = 0x80;
} // namespace NSTrackingAreaOptions

/// A part of a view. The area's owner is told when the pointer enters or leaves the area. With
/// `inVisibleRect` the area is all of the view.
struct NSTrackingArea {
    NSRect rect; ///< The area in the view's coordinates.
    unsigned options = 0;
    std::weak_ptr<NSResponder> owner;
};

} // namespace mirrolet::platform
