#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/WindowList.h"

#include <memory>
#include <variant>

namespace mirrolet::platform::desktop {

/// An image of a window. The pixels stay on the window server if possible, and can then still change when the
/// window draws. May be used by any thread.
class WindowImage {
  public:
    virtual ~WindowImage() = default;
    /// Returns the size in device pixels. Both lengths are above 0.
    [[nodiscard]] virtual PixelSize size() const = 0;
    /// Reads the pixels from the server into memory, without transparency. Returns an empty bitmap if the
    /// server no longer has the pixels. Reading is slow. It is meant for tests, for tools, and for servers
    /// that cannot compose pictures. May be called on any thread.
    [[nodiscard]] virtual Bitmap readBack() const = 0;
};

/// Tells why a capture gives no image.
enum class CaptureFailure {
    gone,         ///< The window was destroyed, or the number was never that of a window.
    notPermitted, ///< Windows cannot be captured on this desktop.
    nothingToSee, ///< The window never has pixels, for example because it only takes input.
    serverLost,   ///< The connection to the window server is broken.
    reported,     ///< The backend has logged why.
};

using CaptureResult = std::variant<std::shared_ptr<const WindowImage>, CaptureFailure>;

class WindowCapture {
  public:
    virtual ~WindowCapture() = default;
    /// Returns whether this desktop lets the program capture windows at all. The answer stays the same while
    /// the process runs.
    [[nodiscard]] virtual bool permitted() const = 0;
    /// Captures a window even if other windows obscure it. The image shows neither the window manager's frame
    /// around the window nor a shadow. A window that exists but cannot be seen gives its last image. While
    /// any image of a destroyed window is held, that window's number counts as gone, even if the server has
    /// given the number to a new window. May be called on any thread.
    ///
    /// If the window has not changed since the last capture, returns the same image object and makes no
    /// request. Also returns the same object if the presenters that show the image have already drawn the
    /// change.
    virtual CaptureResult capture(WindowNumber window) = 0;
    /// Returns the image from capture(), or nullptr for any failure.
    std::shared_ptr<const WindowImage> image(WindowNumber window);
};

} // namespace mirrolet::platform::desktop
