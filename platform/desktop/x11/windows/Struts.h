#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/WorkArea.h"

#include <cstdint>
#include <span>

namespace mirrolet::platform::desktop::x11 {

/// What one window keeps free of a monitor at the edges of a root window of this size, from its
/// `_NET_WM_STRUT_PARTIAL` (12 values) or `_NET_WM_STRUT` (4). Nothing for any other number of values. A
/// strip that would take all of a monitor is meant for the one behind it: a dock at an edge where two
/// monitors meet can only be told so.
ReservedEdges reservedBy(std::span<const std::uint32_t> strut, const PixelRect& monitor, PixelSize root);

/// The deeper of both at each edge.
ReservedEdges united(const ReservedEdges& a, const ReservedEdges& b);

} // namespace mirrolet::platform::desktop::x11
