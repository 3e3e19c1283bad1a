#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/windows/FrameExtents.h"

#include <optional>

namespace mirrolet::platform::desktop::x11 {

/// What the server says about a window that is captured.
struct SourceWindow {
    PixelSize size; ///< Without the border.
    int borderWidth = 0;
    int depth = 0;
    xcb_visualid_t visual = 0;
    FrameExtents shadow;
    bool isInputOnly = false;
    bool isViewable = false;

    /// Waits for the server. None if the window is gone.
    static std::optional<SourceWindow> query(X11Connection& connection, xcb_window_t window);

    /// In the window, without border and shadow.
    [[nodiscard]] PixelRect visiblePart() const { return shadow.visiblePart(size); }
};

} // namespace mirrolet::platform::desktop::x11
