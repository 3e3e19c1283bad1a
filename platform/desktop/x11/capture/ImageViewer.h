#pragma once

#include <memory>

namespace mirrolet::platform::desktop::x11 {

class X11WindowImage;

/// Shows a window's content. A viewer draws each change of the content as soon as a capture has found the
/// change, so that no other thread has to be woken.
class ImageViewer {
  public:
    /// Draws a newer image of the viewed content. Returns false if the main thread has to draw the image
    /// instead. Called on the capturing thread.
    [[nodiscard]] virtual bool show(const std::shared_ptr<const X11WindowImage>& image) = 0;

  protected:
    ~ImageViewer() = default;
};

} // namespace mirrolet::platform::desktop::x11
