#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/ServerResource.h"

#include <xcb/render.h>
#include <xcb/xfixes.h>

#include <optional>

namespace mirrolet::platform::desktop::x11 {

using ServerRegion = ServerResource<&xcb_xfixes_destroy_region, XError::region>;

/// Bounding boxes of the parts of a window that cannot be read directly, in window coordinates.
struct ObscuredParts {
    PixelRect ofPicture; ///< Includes the parts that the window's own shape leaves out.
    PixelRect ofShape; ///< Only the parts that another window obscures or that are beyond the screen's edge.
};

/// Asks the server which parts of `picture` are obscured, and waits for the reply. `picture` is in window
/// coordinates. Returns none if the window is gone.
std::optional<ObscuredParts> obscuredParts(X11Connection& connection, xcb_window_t window, PixelRect picture);

/// Keeps the pixels of other windows out of a picture that is drawn from a window. The server itself checks
/// right before it draws whether the window is obscured, because events tell the program too late that the
/// window is obscured.
class UnobscuredGuard {
  public:
    /// Positions in the pictures that are drawn to, and sizes of windows, must be below this.
    static constexpr int reach = 8192;

    /// `picture` is the part of the window that is read.
    UnobscuredGuard(X11Connection& connection, xcb_window_t window, PixelRect picture);

    /// Blocks all drawing to `destination` until open() if any of the picture is obscured now.
    void close(xcb_render_picture_t destination) const;
    void open(xcb_render_picture_t destination) const;

  private:
    X11Connection& connection;
    const xcb_window_t window;
    ServerRegion all;
    ServerRegion picture;
};

} // namespace mirrolet::platform::desktop::x11
