#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/WindowList.h"

#include <memory>

namespace mirrolet::platform::desktop {

/// The picture of a window. Any thread; the pixels stay with the window server where that is possible. An
/// unchanged window gives the same object again.
class WindowImage {
  public:
    virtual ~WindowImage() = default;
    /// Size in device pixels, both above 0.
    [[nodiscard]] virtual PixelSize size() const = 0;
    /// Reads the pixels back, opaque. Slow: for servers that cannot compose, for tests and tools. Empty if
    /// the server no longer has them. Any thread.
    [[nodiscard]] virtual Bitmap readBack() const = 0;
    /// A presenter that showed the image before has drawn this one already, by itself: it need not be handed
    /// on in a hurry. Any thread.
    [[nodiscard]] virtual bool isShown() const { return false; }
};

class WindowCapture {
  public:
    virtual ~WindowCapture() = default;
    /// Whether windows can be captured here at all (the Screen Recording permission). Constant for a process.
    [[nodiscard]] virtual bool permitted() const = 0;
    /// The window's own picture, without frame and shadow, whether it is covered or not. A window that exists
    /// but cannot be seen gives its last picture. None once the window is gone, for good: a number that the
    /// server uses again is another window. Any thread; a capture of an unchanged window costs no request.
    virtual std::shared_ptr<const WindowImage> image(WindowNumber window) = 0;
};

} // namespace mirrolet::platform::desktop
