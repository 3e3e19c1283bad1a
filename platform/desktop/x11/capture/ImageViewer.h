#pragma once

#include <memory>

namespace mirrolet::platform::desktop::x11 {

class X11WindowImage;

/// Who shows a window's content, and draws what changed in it as soon as a capture has found it: so nobody
/// else has to be woken for that.
class ImageViewer {
  public:
    /// A newer image of the content that is viewed. On the thread of the capture, which goes on afterwards.
    virtual void show(const std::shared_ptr<const X11WindowImage>& image) = 0;

  protected:
    ~ImageViewer() = default;
};

} // namespace mirrolet::platform::desktop::x11
