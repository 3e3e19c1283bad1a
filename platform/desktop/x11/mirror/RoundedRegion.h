#pragma once

#include "platform/desktop/Pixels.h"

#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// A rectangle with round corners as rectangles without overlap, top to bottom. The radius is cut to half the
/// shorter side. Empty for an empty size.
std::vector<PixelRect> roundedRegion(PixelSize size, double radius);

} // namespace mirrolet::platform::desktop::x11
