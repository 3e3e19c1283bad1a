#pragma once

#include "platform/coregraphics/Geometry.h"

#include <memory>

namespace mirrolet::platform {

class NSResponder;

namespace NSTrackingAreaOptions {
inline constexpr unsigned inVisibleRect = 0x200;
// Without effect on this desktop, because every area is told of both and is always active.
inline constexpr unsigned mouseEnteredAndExited = 0x01;
inline constexpr unsigned activeAlways = 0x80;
} // namespace NSTrackingAreaOptions

/// A part of a view whose owner is told when the pointer comes and goes. With `inVisibleRect` the area is all
/// of the view.
struct NSTrackingArea {
    NSRect rect; ///< In the view's coordinates.
    unsigned options = 0;
    std::weak_ptr<NSResponder> owner;
};

} // namespace mirrolet::platform
