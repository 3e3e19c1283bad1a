#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/RenderResources.h"

namespace mirrolet::platform::desktop::x11 {

/// Pixels of a source window in a pixmap. The pixmap stays on the server as long as this object exists.
struct StoredPixels {
    ServerPixmap pixmap;
    xcb_render_pictformat_t opaqueFormat; ///< The pixmap's format without alpha.
    /// The part of the pixmap that shows the window without border and shadow. Not empty.
    PixelRect visible;
};

} // namespace mirrolet::platform::desktop::x11
