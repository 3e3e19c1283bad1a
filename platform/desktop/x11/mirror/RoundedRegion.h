#pragma once

#include "platform/desktop/Pixels.h"

#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Divides a rectangle with round corners into rectangles that do not overlap, top to bottom. A radius above
/// half of the shorter side is reduced to that half. Returns an empty vector for an empty size.
std::vector<PixelRect> roundedRegion(PixelSize size, double radius);

} // namespace mirrolet::platform::desktop::x11
