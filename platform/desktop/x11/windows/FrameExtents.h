#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/Property.h"

namespace mirrolet::platform::desktop::x11 {

/// The invisible shadow that some toolkits draw around their window, within it (_GTK_FRAME_EXTENTS), in
/// pixels.
struct FrameExtents {
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;

    /// Clients write what they like: none if the type, length or values make no sense.
    static FrameExtents from(const Property& property);
    /// The visible part of a window of this size. All of it if nothing would be left.
    [[nodiscard]] PixelRect visiblePart(PixelSize window) const;
};

} // namespace mirrolet::platform::desktop::x11
