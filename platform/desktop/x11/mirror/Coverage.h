#pragma once

#include "platform/desktop/Pixels.h"

#include <algorithm>
#include <cmath>

namespace mirrolet::platform::desktop::x11 {

/// How much of a pixel lies in a rectangle with round corners, 0 to 1: exact enough for an edge. The pixel is
/// in the rectangle, and the radius at most half of its shorter side.
inline double roundedCoverage(int x, int y, PixelSize rectangle, double radius) {
    const double dx = radius - (std::min(x, rectangle.width - 1 - x) + 0.5);
    const double dy = radius - (std::min(y, rectangle.height - 1 - y) + 0.5);
    if (dx <= 0 || dy <= 0)
        return 1;
    return std::clamp(radius - std::hypot(dx, dy) + 0.5, 0.0, 1.0);
}

} // namespace mirrolet::platform::desktop::x11
