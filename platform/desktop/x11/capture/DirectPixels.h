#pragma once

#include "platform/desktop/x11/capture/StoredPixels.h"

#include <atomic>

namespace mirrolet::platform::desktop::x11 {

/// Gives access to a window that is read directly, and keeps a copy of its pixels. The copy stays when the
/// window is hidden or obscured. May be used by any thread.
class DirectPixels {
  public:
    /// The window must have the screen's depth. `visible` is the part of the window that the mirror shows.
    /// The copy is black at first.
    DirectPixels(X11Connection& connection, xcb_window_t window, PixelSize windowSize,
                 xcb_render_pictformat_t format, PixelRect visible);

    [[nodiscard]] xcb_window_t window() const { return sourceWindow; }
    [[nodiscard]] PixelSize windowSize() const { return sourceSize; }
    [[nodiscard]] const StoredPixels& copy() const { return stored; }
    /// Brings the copy up to date. Obscured parts of the copy keep their old pixels, because the server
    /// copies visible pixels only.
    void updateCopy() const;

    /// Returns whether the window itself may be read. After stopReading() only the copy may be read.
    [[nodiscard]] bool isReadable() const { return readable; }
    void stopReading() { readable = false; }

  private:
    X11Connection& connection;
    const xcb_window_t sourceWindow;
    const PixelSize sourceSize;
    const StoredPixels stored;
    std::atomic<bool> readable = true;
};

} // namespace mirrolet::platform::desktop::x11
