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
    PixelRect ofPicture; ///< Includes parts that lie outside of the window's own shape.
    PixelRect ofShape; ///< Only the parts that another window obscures or that are beyond the screen's edge.
};

/// Asks the server which parts of `picture` are obscured, and waits for the reply. `picture` is in window
/// coordinates. Returns none if the window is gone.
std::optional<ObscuredParts> obscuredParts(X11Connection& connection, xcb_window_t window, PixelRect picture);

/// Blocks drawing from a window while the window is obscured, because the pixels of other windows would be
/// drawn. The server itself checks right before it draws whether the window is obscured. An event about this
/// would reach the program too late.
class UnobscuredGuard {
  public:
    /// Window sizes, and positions in the pictures that are drawn to, must be below this number. The guard
    /// makes rectangles with coordinates of up to three times this number, and X coordinates have only 16
    /// bits.
    static constexpr int reach = 8192;

    /// `picture` is the part of the window that is read.
    UnobscuredGuard(X11Connection& connection, xcb_window_t window, PixelRect picture);

    /// If the server finds that any part of the picture is obscured, blocks all drawing to `destination`
    /// until open() is called.
    void close(xcb_render_picture_t destination) const;
    void open(xcb_render_picture_t destination) const;

  private:
    X11Connection& connection;
    const xcb_window_t window;
    ServerRegion all;
    ServerRegion picture;
};

} // namespace mirrolet::platform::desktop::x11
