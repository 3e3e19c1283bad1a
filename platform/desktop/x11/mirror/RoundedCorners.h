#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/RenderFormats.h"
#include "platform/desktop/x11/server/RenderResources.h"

#include <array>

namespace mirrolet::platform::desktop::x11 {

/// Cuts the four corners of a translucent picture to quarter circles, with smooth edges. Main thread.
class RoundedCorners {
  public:
    /// For a picture of this size. `radius` in pixels; 0 cuts nothing.
    RoundedCorners(X11Connection& connection, const RenderFormats& formats, PixelSize size, double radius);

    /// Cuts what of the corners lies in `part`. Once for every time that it was drawn.
    void cut(xcb_render_picture_t destination, PixelRect part) const;

  private:
    X11Connection& connection;
    int side = 0;                    ///< Of the square that a corner is cut from.
    Surface mask;                    ///< The four corners put together.
    std::array<PixelRect, 4> places; ///< Where they lie in the picture.
};

} // namespace mirrolet::platform::desktop::x11
