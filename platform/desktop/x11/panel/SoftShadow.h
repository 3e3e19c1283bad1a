#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/Pixels.h"

namespace mirrolet::platform::desktop::x11 {

/// Returns the distance from a panel's edge, outside and inside, within which the shadow's blur can be seen.
int reachOf(const PanelShadow& shadow);

/// Returns the shadow of a rectangle with round corners, in black with an alpha that a Gaussian has blurred.
/// The bitmap is as large as the rectangle plus the shadow's reach on each side, without the offset.
Bitmap softShadow(PixelSize rectangle, double radius, const PanelShadow& shadow);

} // namespace mirrolet::platform::desktop::x11
