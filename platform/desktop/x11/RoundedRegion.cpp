#include "platform/desktop/x11/RoundedRegion.h"

#include <algorithm>
#include <cmath>

namespace mirrolet::platform::desktop::x11 {

namespace {

/// How far the edge of a row's middle lies inside the rectangle.
int insetOfRow(int row, int height, double radius) {
    const double fromEdge = std::min(row, height - 1 - row) + 0.5;
    if (fromEdge >= radius)
        return 0;
    const double up = radius - fromEdge;
    return static_cast<int>(std::lround(radius - std::sqrt(radius * radius - up * up)));
}

} // namespace

std::vector<PixelRect> roundedRegion(PixelSize size, double radius) {
    std::vector<PixelRect> bands;
    if (size.width <= 0 || size.height <= 0)
        return bands;
    const double cut = std::clamp(radius, 0.0, std::min(size.width, size.height) / 2.0);
    for (int row = 0; row < size.height; ++row) {
        const int inset = insetOfRow(row, size.height, cut);
        if (!bands.empty() && bands.back().x == inset)
            ++bands.back().height;
        else
            bands.push_back({inset, row, size.width - 2 * inset, 1});
    }
    std::erase_if(bands, [](const PixelRect& band) { return band.width <= 0; });
    return bands;
}

} // namespace mirrolet::platform::desktop::x11
