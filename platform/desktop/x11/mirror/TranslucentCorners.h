#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/RenderFormats.h"
#include "platform/desktop/x11/server/RenderResources.h"

#include <array>

namespace mirrolet::platform::desktop::x11 {

/// Rounds the four corners of a picture that has alpha, with smooth edges. To be used by one thread at a
/// time.
class TranslucentCorners {
  public:
    /// `size` is the size of the picture. The radius is in pixels; with 0 the corners stay square.
    TranslucentCorners(X11Connection& connection, const RenderFormats& formats, PixelSize size,
                       double radius);

    /// Rounds those parts of the corners that lie in `part`. Must be called exactly once after each drawing
    /// of `part`, because a second call would make the edges of the corners more transparent.
    void cut(xcb_render_picture_t destination, PixelRect part) const;

  private:
    X11Connection& connection;
    int side = 0;                    ///< The side of the square around one corner.
    Surface mask;                    ///< The alpha of the four squares, in two rows.
    std::array<PixelRect, 4> places; ///< Where the four squares lie in the picture.
};

} // namespace mirrolet::platform::desktop::x11
