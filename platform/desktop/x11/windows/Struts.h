#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/WorkArea.h"

#include <cstdint>
#include <span>

namespace mirrolet::platform::desktop::x11 {

/// Returns the edges of a monitor that one window reserves. `strut` holds the values of the window's
/// `_NET_WM_STRUT_PARTIAL` (12 values) or `_NET_WM_STRUT` (4 values). Any other number of values reserves
/// nothing. A strut is measured from the edge of the root window, which has the size `root`. The strut of a
/// dock at the left edge of the right one of two monitors therefore also spans the whole left monitor. A
/// strut that spans a whole monitor is ignored for that monitor.
ReservedEdges reservedBy(std::span<const std::uint32_t> strut, const PixelRect& monitor, PixelSize root);

/// Returns for each edge the larger of the two reserved depths.
ReservedEdges united(const ReservedEdges& a, const ReservedEdges& b);

} // namespace mirrolet::platform::desktop::x11
