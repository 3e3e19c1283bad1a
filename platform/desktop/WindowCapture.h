#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/WindowList.h"

#include <memory>
#include <variant>

namespace mirrolet::platform::desktop {

/// The picture of a window. Any thread. The pixels stay with the window server where that is possible, and
/// the window may change them later.
class WindowImage {
  public:
    virtual ~WindowImage() = default;
    /// Size in device pixels, both above 0.
    [[nodiscard]] virtual PixelSize size() const = 0;
    /// Reads the pixels back, opaque. Slow: for servers that cannot compose, for tests and tools. Empty if
    /// the server no longer has them. Any thread.
    [[nodiscard]] virtual Bitmap readBack() const = 0;
};

/// Why a capture gives no image.
enum class CaptureFailure {
    gone,         ///< The window is destroyed, or its number was never a window.
    notPermitted, ///< Windows cannot be captured on this desktop.
    nothingToSee, ///< The window never has any pixels, as one that only takes input.
    serverLost,   ///< The connection to the window server is broken.
};

using CaptureResult = std::variant<std::shared_ptr<const WindowImage>, CaptureFailure>;

class WindowCapture {
  public:
    virtual ~WindowCapture() = default;
    /// Whether windows can be captured here at all (the Screen Recording permission). Constant for a process.
    [[nodiscard]] virtual bool permitted() const = 0;
    /// The window's own picture, without frame and shadow, whether it is obscured or not. A window that
    /// exists but cannot be seen gives its last picture. A destroyed window stays gone, because a number that
    /// the server uses again is another window. Any thread; a capture of an unchanged window costs no
    /// request.
    /// The last image comes back, the same object, if the window did not change since, or if the presenters
    /// that show the image have drawn the change by themselves.
    virtual CaptureResult capture(WindowNumber window) = 0;
    /// As capture(). nullptr for any failure.
    std::shared_ptr<const WindowImage> image(WindowNumber window);
};

} // namespace mirrolet::platform::desktop
