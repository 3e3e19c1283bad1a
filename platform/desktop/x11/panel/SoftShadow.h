#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/Pixels.h"

namespace mirrolet::platform::desktop::x11 {

/// How far a shadow reaches beyond what throws it, and just as far into it, until nothing changes any more.
int reachOf(const PanelShadow& shadow);

/// The shadow that a rectangle with round corners throws: black, its alpha blurred by a Gaussian. As large as
/// the rectangle with the shadow's reach on each side; the offset is not in it.
Bitmap softShadow(PixelSize rectangle, double radius, const PanelShadow& shadow);

} // namespace mirrolet::platform::desktop::x11
