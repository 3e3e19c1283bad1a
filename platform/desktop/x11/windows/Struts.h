#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/WorkArea.h"

#include <cstdint>
#include <span>

namespace mirrolet::platform::desktop::x11 {

/// Returns the edges of a monitor that one window reserves. `strut` holds the window's property
/// `_NET_WM_STRUT_PARTIAL` (12 values) or `_NET_WM_STRUT` (4 values). Any other number of values reserves
/// nothing. `root` is the size of the root window.
///
/// A strut is measured from the edge of the root window and not from the edge of a monitor. A dock between
/// two monitors, at the left edge of the right one, therefore has a strut that spans the whole left monitor.
/// A strut that spans a whole monitor is ignored for that monitor.
ReservedEdges reservedBy(std::span<const std::uint32_t> strut, const PixelRect& monitor, PixelSize root);

/// Returns the edges of a monitor that lie outside of the area in `_NET_WORKAREA`. Nothing is reserved if
/// there are other monitors, or if `workArea` is no area inside the root window. The other parameters are as
/// for reservedBy().
ReservedEdges outsideOf(std::span<const std::uint32_t> workArea, const PixelRect& monitor, PixelSize root);

/// Returns for each edge the larger of the two reserved depths.
ReservedEdges united(const ReservedEdges& a, const ReservedEdges& b);

} // namespace mirrolet::platform::desktop::x11
