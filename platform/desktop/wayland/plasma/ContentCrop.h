#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/wayland/plasma/PlasmaWindow.h"

namespace mirrolet::platform::desktop::wayland {

/// Finds the window's content in the frames of a stream. KWin 6 streams a window together with its title bar
/// and its open menus, and reports where the content is. KWin 5.27 streams only the content and reports
/// nothing.
class ContentCrop {
  public:
    /// Returns the part of a frame that shows the content. `frame` is in pixels. The rectangles of `window`
    /// may have another scale.
    [[nodiscard]] PixelRect partOf(const PixelRect& frame, const PlasmaWindow& window);

  private:
    double scale = 1; ///< Frame pixels per unit of the window's rectangles, in the last frame without menus.
};

} // namespace mirrolet::platform::desktop::wayland
