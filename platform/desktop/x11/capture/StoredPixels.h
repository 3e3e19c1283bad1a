#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/RenderResources.h"

namespace mirrolet::platform::desktop::x11 {

/// Pixels of a source window in a pixmap, which stays on the server as long as this object does.
struct StoredPixels {
    ServerPixmap pixmap;
    xcb_render_pictformat_t opaqueFormat; ///< The pixmap's format, alpha left out.
    PixelRect visible;                    ///< In the pixmap: the window without border and shadow. Not empty.
};

} // namespace mirrolet::platform::desktop::x11
