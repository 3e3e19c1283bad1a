#pragma once

#include "platform/desktop/PixelRects.h"
#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/ServerResource.h"

#include <xcb/render.h>
#include <xcb/xcb.h>

#include <cstdint>

namespace mirrolet::platform::desktop::x11 {

using ServerPixmap = ServerResource<&xcb_free_pixmap>;
using ServerPicture = ServerResource<&xcb_render_free_picture, XError::picture>;
using ServerContext = ServerResource<&xcb_free_gc>;

/// A pixmap and the RENDER picture on it.
struct Surface {
    ServerPixmap pixmap;
    ServerPicture picture;
    PixelSize size;
};

/// Makes a picture on a drawable. The picture scales bilinearly, and a sample outside the drawable takes the
/// nearest edge pixel.
ServerPicture makePicture(X11Connection& connection, xcb_drawable_t drawable, xcb_render_pictformat_t format);
ServerPixmap makePixmap(X11Connection& connection, PixelSize size, std::uint8_t depth);
/// Makes a surface with undefined content.
Surface makeSurface(X11Connection& connection, PixelSize size, std::uint8_t depth,
                    xcb_render_pictformat_t format);
/// Uploads pixels of 32 bits. Splits the upload into several requests if one would be longer than the server
/// allows.
void upload(X11Connection& connection, const Surface& surface, const Bitmap& bitmap);

} // namespace mirrolet::platform::desktop::x11
