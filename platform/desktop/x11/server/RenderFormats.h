#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <xcb/render.h>

#include <cstdint>
#include <map>

namespace mirrolet::platform::desktop::x11 {

/// Knows the pixel formats of the server's RENDER extension. The constructor asks the server once, because
/// the formats never change. Every format is 0 on a server without RENDER. X11 calls the pixel layout of a
/// window a visual.
class RenderFormats {
  public:
    explicit RenderFormats(X11Connection& connection);

    /// Returns whether the server can store and compose pixels of 24 and of 32 bits.
    [[nodiscard]] bool complete() const { return opaque24 != 0 && argb32 != 0; }
    /// Returns the format that reads the pixels of a visual as opaque, without their alpha. Returns 0 if
    /// there is none.
    [[nodiscard]] xcb_render_pictformat_t opaque(xcb_visualid_t visual) const;
    /// Returns the format that reads the pixels of a visual with their alpha. Returns 0 if there is none.
    [[nodiscard]] xcb_render_pictformat_t exact(xcb_visualid_t visual) const;
    /// Returns whether windows of this visual can be translucent.
    [[nodiscard]] bool hasAlpha(xcb_visualid_t visual) const;

    xcb_render_pictformat_t opaque24 = 0; ///< x8r8g8b8 of depth 24.
    xcb_render_pictformat_t argb32 = 0;   ///< a8r8g8b8 of depth 32.

  private:
    std::map<xcb_render_pictformat_t, xcb_render_pictforminfo_t> formats;
    std::map<xcb_visualid_t, xcb_render_pictformat_t> visuals;
};

} // namespace mirrolet::platform::desktop::x11
