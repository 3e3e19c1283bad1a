#include "platform/desktop/x11/windows/Struts.h"

#include "platform/desktop/PixelRects.h"

#include <algorithm>
#include <cstddef>

namespace mirrolet::platform::desktop::x11 {

namespace {

// `_NET_WM_STRUT` and `_NET_WM_STRUT_PARTIAL` begin with the reserved depth at each edge, in this order.
// `_NET_WM_STRUT_PARTIAL` goes on with the first and the last reserved pixel along each edge.
enum Edge : std::size_t { left, right, top, bottom };
constexpr std::size_t depthsOnly = 4;
constexpr std::size_t withRanges = 12;

int limited(std::uint32_t value, int most) {
    return static_cast<int>(std::min(value, static_cast<std::uint32_t>(std::max(most, 0))));
}

/// Returns the strip that the strut reserves along one edge of the root window.
PixelRect strip(std::span<const std::uint32_t> strut, Edge edge, PixelSize root) {
    const bool upright = edge == left || edge == right;
    const int depth = limited(strut[edge], upright ? root.width : root.height);
    const int length = upright ? root.height : root.width;
    int from = 0;
    int to = length;
    if (strut.size() == withRanges) {
        from = limited(strut[depthsOnly + 2 * edge], length);
        to = limited(strut[depthsOnly + 2 * edge + 1], length - 1) + 1;
    }
    if (upright)
        return {edge == left ? 0 : root.width - depth, from, depth, to - from};
    return {from, edge == top ? 0 : root.height - depth, to - from, depth};
}

} // namespace

ReservedEdges reservedBy(std::span<const std::uint32_t> strut, const PixelRect& monitor, PixelSize root) {
    if ((strut.size() != depthsOnly && strut.size() != withRanges) || isEmpty(monitor))
        return {};
    const auto taken = [&](Edge edge) { return intersection(monitor, strip(strut, edge, root)); };
    const auto unlessAll = [](int depth, int all) { return depth < all ? depth : 0; };
    return {unlessAll(taken(left).width, monitor.width), unlessAll(taken(top).height, monitor.height),
            unlessAll(taken(right).width, monitor.width), unlessAll(taken(bottom).height, monitor.height)};
}

ReservedEdges outsideOf(std::span<const std::uint32_t> workArea, const PixelRect& monitor, PixelSize root) {
    constexpr std::size_t valuesOfRectangle = 4;
    if (workArea.size() < valuesOfRectangle || monitor != PixelRect{0, 0, root.width, root.height})
        return {};
    const PixelRect area{limited(workArea[0], root.width), limited(workArea[1], root.height),
                         limited(workArea[2], root.width), limited(workArea[3], root.height)};
    if (isEmpty(area) || !contains(monitor, area))
        return {};
    return {area.x, area.y, root.width - area.x - area.width, root.height - area.y - area.height};
}

ReservedEdges united(const ReservedEdges& a, const ReservedEdges& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

} // namespace mirrolet::platform::desktop::x11
