#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/WorkArea.h"

#include <cstdint>
#include <span>

namespace mirrolet::platform::desktop::x11 {

/// The edges of a monitor that one window reserves, from the window's `_NET_WM_STRUT_PARTIAL` (12 values) or
/// `_NET_WM_STRUT` (4 values). Nothing is reserved by any other number of values. A strip reaches from the
/// edge of the root window, which has the size `root`. A dock at an edge where two monitors meet therefore
/// has a strip across the whole monitor in front, and such a strip counts only for the monitor behind.
ReservedEdges reservedBy(std::span<const std::uint32_t> strut, const PixelRect& monitor, PixelSize root);

/// The deeper of both at each edge.
ReservedEdges united(const ReservedEdges& a, const ReservedEdges& b);

} // namespace mirrolet::platform::desktop::x11
