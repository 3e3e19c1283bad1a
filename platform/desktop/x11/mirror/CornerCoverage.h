#pragma once

#include "platform/desktop/Pixels.h"

#include <algorithm>
#include <cmath>

namespace mirrolet::platform::desktop::x11 {

/// Returns how much of a pixel, from 0 to 1, lies inside a rectangle with round corners. The pixel must lie
/// in the rectangle, and the radius must be at most half of the shorter side. The result is a close
/// approximation.
inline double cornerCoverage(int x, int y, PixelSize rectangle, double radius) {
    const double dx = radius - (std::min(x, rectangle.width - 1 - x) + 0.5);
    const double dy = radius - (std::min(y, rectangle.height - 1 - y) + 0.5);
    if (dx <= 0 || dy <= 0)
        return 1;
    return std::clamp(radius - std::hypot(dx, dy) + 0.5, 0.0, 1.0);
}

} // namespace mirrolet::platform::desktop::x11
