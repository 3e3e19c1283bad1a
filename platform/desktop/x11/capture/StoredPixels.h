#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/RenderResources.h"

namespace mirrolet::platform::desktop::x11 {

/// Pixels of a source window in a pixmap, which stays on the server as long as this object does.
struct StoredPixels {
    ServerPixmap pixmap;
    xcb_render_pictformat_t opaqueFormat; ///< The pixmap's format without alpha.
    PixelRect visible;                    ///< The window without border and shadow, in the pixmap. Not empty.
};

} // namespace mirrolet::platform::desktop::x11
