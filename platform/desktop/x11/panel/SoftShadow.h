#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/Pixels.h"

namespace mirrolet::platform::desktop::x11 {

/// The distance from the edge of a panel within which the blur of its shadow can be seen, outside and inside.
int reachOf(const PanelShadow& shadow);

/// The shadow of a rectangle with round corners: black, with an alpha that a Gaussian has blurred. As large
/// as the rectangle plus the shadow's reach on each side, without the offset.
Bitmap softShadow(PixelSize rectangle, double radius, const PanelShadow& shadow);

} // namespace mirrolet::platform::desktop::x11
