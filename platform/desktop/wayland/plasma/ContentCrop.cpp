#include "platform/desktop/wayland/plasma/ContentCrop.h"

#include "platform/desktop/PixelRects.h"

#include <cmath>

namespace mirrolet::platform::desktop::wayland {

namespace {

int scaled(int length, double scale) {
    return static_cast<int>(std::lround(length * scale));
}

} // namespace

PixelRect ContentCrop::partOf(const PixelRect& frame, const PlasmaWindow& window) {
    if (!window.content || isEmpty(*window.content) || isEmpty(window.frame))
        return frame;
    const double present = static_cast<double>(frame.width) / window.frame.width;
    // The old scale is kept while a menu is open. An open menu makes the frame larger than the window, nearly
    // always to the right or downwards. The proportions then differ, and the window is in the frame's
    // top-left corner.
    if (std::abs(scaled(window.frame.height, present) - frame.height) <= 1)
        scale = present;
    const auto& content = *window.content;
    const auto part = intersection({frame.x + scaled(content.x - window.frame.x, scale),
                                    frame.y + scaled(content.y - window.frame.y, scale),
                                    scaled(content.width, scale), scaled(content.height, scale)},
                                   frame);
    return isEmpty(part) ? frame : part;
}

} // namespace mirrolet::platform::desktop::wayland
