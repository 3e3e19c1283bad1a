#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/WindowCapture.h"

#include <cstdint>
#include <memory>

namespace mirrolet::platform::desktop {

/// Composes one native window on the server: background, picture, overlay, rounded mask, in this order. Main
/// thread only. Nothing is drawn before the first resize(). Setters only note what changed, and present()
/// draws. The pixels of a window image may change later. A presenter may draw such a change by itself, on the
/// thread of the capture that finds the change, until the presenter is given another picture or none.
class WindowPresenter {
  public:
    virtual ~WindowPresenter() = default;
    /// Sets the size of the window and the radius of its corners, in device pixels. The overlay and picture
    /// rectangle are invalid afterwards and have to be set again.
    virtual void resize(PixelSize size, double cornerRadius) = 0;
    /// Sets the opaque colour under everything, 0xAARRGGBB.
    virtual void setBackground(std::uint32_t colour) = 0;
    /// Sets the picture and the rectangle of the window that the picture is scaled to fill, in device pixels.
    /// nullptr means no picture.
    virtual void setPicture(std::shared_ptr<const WindowImage> image, PixelRect target) = 0;
    /// Sets the overlay, which lies over the picture and has the size of the window. Each call uploads the
    /// overlay once.
    virtual void setOverlay(const Bitmap& overlay) = 0;
    /// Draws what has changed since the last call, and copies the result to the window. Does nothing without
    /// a change.
    virtual void present() = 0;
    /// Copies this part to the window again, because the server has lost the part (an expose event).
    virtual void repair(PixelRect area) = 0;
};

} // namespace mirrolet::platform::desktop
