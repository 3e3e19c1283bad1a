#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/Property.h"

namespace mirrolet::platform::desktop::x11 {

/// The margins of an invisible shadow that some toolkits draw inside their window (_GTK_FRAME_EXTENTS), in
/// pixels.
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
