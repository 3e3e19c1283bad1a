#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/WindowCapture.h"

#include <cstdint>
#include <memory>

namespace mirrolet::platform::desktop {

/// Puts one native window together on the server: background, picture, overlay, rounded mask, in this order.
/// Main thread only. Nothing is drawn before the first resize(). Setters only note what changed; present()
/// draws. What a window image shows may change later: that, a presenter may draw by itself, on the thread of
/// the capture that finds it, until it is given another picture or none.
class WindowPresenter {
  public:
    virtual ~WindowPresenter() = default;
    /// Size of the window and radius of its corners, in device pixels. The overlay and picture rectangle are
    /// void afterwards and have to be set again.
    virtual void resize(PixelSize size, double cornerRadius) = 0;
    /// Opaque colour under everything, 0xAARRGGBB.
    virtual void setBackground(std::uint32_t colour) = 0;
    /// The picture and where it goes in the window, in device pixels; it is scaled to fill the rectangle.
    /// nullptr for none.
    virtual void setPicture(std::shared_ptr<const WindowImage> image, PixelRect target) = 0;
    /// What lies over the picture, the size of the window. Uploaded once for each call.
    virtual void setOverlay(const Bitmap& overlay) = 0;
    /// Draws what has changed since the last call, and copies it to the window. Without a change, nothing.
    virtual void present() = 0;
    /// The server lost this part of the window (an expose event): copies it again.
    virtual void repair(PixelRect area) = 0;
};

} // namespace mirrolet::platform::desktop
