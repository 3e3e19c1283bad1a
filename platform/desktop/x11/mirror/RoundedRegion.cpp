#include "platform/desktop/x11/mirror/RoundedRegion.h"

#include "platform/desktop/x11/mirror/CornerCoverage.h"

#include <algorithm>

namespace mirrolet::platform::desktop::x11 {

namespace {

// A pixel on the edge of a round corner is blended with transparent black and looks dark. A pixel of which
// less than this part lies inside the rounded rectangle is therefore left out.
constexpr double leastCoverage = 0.8;

/// Returns how many pixels at each end of a row lie outside of the round corners.
int insetOfRow(int row, PixelSize size, double radius) {
    int inset = 0;
    while (inset < size.width / 2 && cornerCoverage(inset, row, size, radius) < leastCoverage)
        ++inset;
    return inset;
}

} // namespace

std::vector<PixelRect> roundedRegion(PixelSize size, double radius) {
    std::vector<PixelRect> bands;
    if (size.width <= 0 || size.height <= 0)
        return bands;
    const double cut = std::clamp(radius, 0.0, std::min(size.width, size.height) / 2.0);
    for (int row = 0; row < size.height; ++row) {
        const int inset = insetOfRow(row, size, cut);
        if (!bands.empty() && bands.back().x == inset)
            ++bands.back().height;
        else
            bands.push_back({inset, row, size.width - 2 * inset, 1});
    }
    std::erase_if(bands, [](const PixelRect& band) { return band.width <= 0; });
    return bands;
}

} // namespace mirrolet::platform::desktop::x11
