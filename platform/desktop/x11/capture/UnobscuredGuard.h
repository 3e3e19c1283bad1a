#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/ServerResource.h"

#include <xcb/render.h>
#include <xcb/xfixes.h>

#include <optional>

namespace mirrolet::platform::desktop::x11 {

using ServerRegion = ServerResource<&xcb_xfixes_destroy_region>;

/// What of a window's picture cannot be read where the window stands, in the window. Both are bounding boxes.
struct CoveredParts {
    PixelRect ofPicture; ///< Also what the window's own shape leaves out.
    PixelRect ofShape;   ///< Only what something else lies on, or what is beyond the edge of the screen.
};

/// Asks the server, and waits for it. `picture` is in the window. None if the window is gone.
std::optional<CoveredParts> coveredParts(X11Connection& connection, xcb_window_t window, PixelRect picture);

/// Keeps the pixels of what covers a window out of a picture that is drawn from the window. The server itself
/// looks at what covers the window right before it draws, as the program always learns of it too late.
class UnobscuredGuard {
  public:
    /// Places in pictures that are drawn to, and sizes of windows, must lie below this.
    static constexpr int reach = 8192;

    /// `picture` is the part of the window that is read.
    UnobscuredGuard(X11Connection& connection, xcb_window_t window, PixelRect picture);

    /// Until open(), nothing can be drawn to `destination` if any of the window is covered now.
    void close(xcb_render_picture_t destination) const;
    void open(xcb_render_picture_t destination) const;

  private:
    X11Connection& connection;
    const xcb_window_t window;
    ServerRegion all;
    ServerRegion picture;
};

} // namespace mirrolet::platform::desktop::x11
