#pragma once

#include "platform/desktop/x11/capture/StoredPixels.h"

#include <atomic>

namespace mirrolet::platform::desktop::x11 {

/// The pixels of a window that is read directly, and a copy of them. The copy stays when the window is hidden
/// or obscured. Any thread.
class DirectPixels {
  public:
    /// For a window of the screen's depth, of this size and format, of which `visible` is shown. The copy is
    /// black at first.
    DirectPixels(X11Connection& connection, xcb_window_t window, PixelSize windowSize,
                 xcb_render_pictformat_t format, PixelRect visible);

    [[nodiscard]] xcb_window_t window() const { return sourceWindow; }
    [[nodiscard]] PixelSize windowSize() const { return sourceSize; }
    [[nodiscard]] const StoredPixels& copy() const { return stored; }
    /// Brings the copy up to date. Obscured parts keep what they had, because the server copies visible
    /// pixels only.
    void updateCopy() const;

    /// Whether the window itself may be read. The copy alone is valid afterwards.
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
