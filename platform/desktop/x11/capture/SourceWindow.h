#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/windows/FrameExtents.h"

#include <optional>

namespace mirrolet::platform::desktop::x11 {

/// The properties of a captured window, as the server reports them.
struct SourceWindow {
    PixelSize size; ///< Without the border.
    int borderWidth = 0;
    int depth = 0;
    xcb_visualid_t visual = 0;
    FrameExtents shadow;
    bool isInputOnly = false;
    bool isViewable = false;

    /// Asks the server and waits for the reply. Returns none if the window is gone.
    static std::optional<SourceWindow> query(X11Connection& connection, xcb_window_t window);

    /// Returns the rectangle of the window without its border and its shadow, in window coordinates.
    [[nodiscard]] PixelRect visiblePart() const { return shadow.visiblePart(size); }
};

} // namespace mirrolet::platform::desktop::x11
