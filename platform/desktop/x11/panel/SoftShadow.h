#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/Pixels.h"

namespace mirrolet::platform::desktop::x11 {

/// Returns the distance from a panel's edge within which the shadow's blur can be seen. The blur reaches
/// equally far outside and inside.
int reachOf(const PanelShadow& shadow);

/// Returns the shadow of a rectangle with round corners. The shadow is black, and its alpha is blurred with a
/// Gaussian. The bitmap is larger than the rectangle by the shadow's reach on each side. The shadow's offset
/// is not applied.
Bitmap softShadow(PixelSize rectangle, double radius, const PanelShadow& shadow);

} // namespace mirrolet::platform::desktop::x11
