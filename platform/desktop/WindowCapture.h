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
    /// Returns the size in device pixels. Both lengths are above 0.
    [[nodiscard]] virtual PixelSize size() const = 0;
    /// Reads the pixels back, opaque. Empty if the server no longer has the pixels. This is slow, and meant
    /// for servers that cannot compose, for tests and for tools. Any thread.
    [[nodiscard]] virtual Bitmap readBack() const = 0;
};

/// Why a capture gives no image.
enum class CaptureFailure {
    gone,         ///< The window is destroyed, or its number was never a window.
    notPermitted, ///< Windows cannot be captured on this desktop.
    nothingToSee, ///< The window never has pixels, because it only takes input, for example.
    serverLost,   ///< The connection to the window server is broken.
};

using CaptureResult = std::variant<std::shared_ptr<const WindowImage>, CaptureFailure>;

class WindowCapture {
  public:
    virtual ~WindowCapture() = default;
    /// Returns whether windows can be captured here at all (the Screen Recording permission). Constant for a
    /// process.
    [[nodiscard]] virtual bool permitted() const = 0;
    /// Captures the window's own picture, without frame and shadow, whether the window is obscured or not. A
    /// window that exists but cannot be seen gives its last picture. A destroyed window stays gone, even if
    /// the server uses its number again, because that is another window. Any thread. A capture of an
    /// unchanged window costs no request.
    /// Returns the same image object as the last time if the window has not changed since. Does so too if the
    /// presenters that show the image have drawn the change by themselves.
    virtual CaptureResult capture(WindowNumber window) = 0;
    /// Captures as capture() does, but returns nullptr for any failure.
    std::shared_ptr<const WindowImage> image(WindowNumber window);
};

} // namespace mirrolet::platform::desktop
