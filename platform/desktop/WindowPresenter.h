#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/WindowCapture.h"

#include <cstdint>
#include <memory>

namespace mirrolet::platform::desktop {

/// Composes the content of one native window on the server. The layers are, from the bottom, background,
/// picture and overlay, and the corners are rounded. The setters only store what changed, and present() draws
/// the changes. Nothing is drawn before the first resize(). All functions must be called on the main thread.
///
/// The pixels of the picture may change later. The presenter may then draw the change by itself, on the
/// thread of the capture that finds the change, until setPicture() sets another picture.
class WindowPresenter {
  public:
    virtual ~WindowPresenter() = default;
    /// Sets the size of the window and the radius of its corners, in device pixels. Afterwards the overlay
    /// and the rectangle of the picture are invalid and must be set again.
    virtual void resize(PixelSize size, double cornerRadius) = 0;
    /// Sets the opaque colour behind the picture, as 0xAARRGGBB.
    virtual void setBackground(std::uint32_t colour) = 0;
    /// Sets the picture, which is scaled to fill the rectangle `target` of the window. The rectangle is in
    /// device pixels. nullptr means no picture.
    virtual void setPicture(std::shared_ptr<const WindowImage> image, PixelRect target) = 0;
    /// Sets the overlay, which lies over the picture and must have the size of the window. Each call uploads
    /// the overlay to the server.
    virtual void setOverlay(const Bitmap& overlay) = 0;
    /// Draws what has changed since the last call and copies the result to the window. Does nothing if
    /// nothing has changed.
    virtual void present() = 0;
    /// Copies a part of the last drawing to the window again. Must be called for an expose event, because the
    /// server has then lost that part of the window.
    virtual void repair(PixelRect area) = 0;
};

} // namespace mirrolet::platform::desktop
