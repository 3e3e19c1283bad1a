#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/RenderFormats.h"
#include "platform/desktop/x11/server/RenderResources.h"

#include <array>

namespace mirrolet::platform::desktop::x11 {

/// Makes the four corners of a picture with alpha round, with smooth edges. To be used by one thread at a
/// time.
class TranslucentCorners {
  public:
    /// `size` is the size of the picture. The radius is in pixels; with 0 the corners stay square.
    TranslucentCorners(X11Connection& connection, const RenderFormats& formats, PixelSize size,
                       double radius);

    /// Rounds the corners as far as they lie in `part`. To be called exactly once after each drawing of
    /// `part`.
    void cut(xcb_render_picture_t destination, PixelRect part) const;

  private:
    X11Connection& connection;
    int side = 0;                    ///< The side of the square around one corner.
    Surface mask;                    ///< The four squares, side by side in two rows.
    std::array<PixelRect, 4> places; ///< The four squares in the picture.
};

} // namespace mirrolet::platform::desktop::x11
