#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/Property.h"

namespace mirrolet::platform::desktop::x11 {

/// The margins around the visible part of a window, in pixels (_GTK_FRAME_EXTENTS). Some toolkits make their
/// windows larger than what the user sees as the window, and draw a shadow in these margins.
struct FrameExtents {
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;

    /// Reads the margins from the property. Returns 0 for all of them if the property's type, length or
    /// values make no sense.
    static FrameExtents from(const Property& property);
    /// Returns the visible part of a window of this size. Returns the whole window if nothing would be left.
    [[nodiscard]] PixelRect visiblePart(PixelSize window) const;
};

} // namespace mirrolet::platform::desktop::x11
