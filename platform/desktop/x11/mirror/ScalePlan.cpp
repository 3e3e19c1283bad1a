#include "platform/desktop/x11/mirror/ScalePlan.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr int largestPixmap = 32767;
// planFor() chooses the steps named beside the smallest constant that is not below the ratio of source size
// to target size. If these steps make a multiple of the target size, halvings to the target size follow. At
// ratios above `toFourfold`, the picture is first halved until the ratio is at most `toFourfold`.
constexpr double toTarget = 1.5;       ///< One step to the target size.
constexpr double toDouble = 3.3;       ///< One step to twice the target size.
constexpr double halvedToDouble = 6.5; ///< A halving, then one step to twice the target size.
constexpr double toFourfold = 6.8;     ///< One step to four times the target size.

struct AxisPlan {
    int halvings; ///< The number of exact halvings before the uneven step.
    int multiple; ///< The uneven step makes the target size times this number.
};

AxisPlan planFor(double ratio) {
    if (ratio <= toTarget)
        return {0, 1};
    if (ratio <= toDouble)
        return {0, 2};
    if (ratio <= halvedToDouble)
        return {1, 2};
    return {std::max(0, static_cast<int>(std::ceil(std::log2(ratio / toFourfold)))), 4};
}

} // namespace

std::vector<AxisStep> planAxis(int from, int to) {
    auto [halvings, multiple] = planFor(static_cast<double>(from) / to);
    while (multiple > 1 && to > largestPixmap / multiple)
        multiple /= 2;
    std::vector<AxisStep> steps;
    int pixels = from;
    // How many of the `pixels` the picture covers. Halving an odd number of pixels adds half a pixel that the
    // picture does not cover.
    double covered = from;
    for (int i = 0; i < halvings; ++i) {
        pixels = (pixels + 1) / 2;
        covered /= 2;
        steps.push_back({pixels, 2});
    }
    if (covered != static_cast<double>(to) * multiple)
        steps.push_back({to * multiple, covered / (static_cast<double>(to) * multiple)});
    for (; multiple > 1; multiple /= 2)
        steps.push_back({to * multiple / 2, 2});
    if (steps.empty())
        steps.push_back({to, 1});
    return steps;
}

std::vector<ScaleStep> planScaling(PixelSize from, PixelSize to) {
    const auto x = planAxis(from.width, to.width);
    const auto y = planAxis(from.height, to.height);
    std::vector<ScaleStep> steps;
    for (std::size_t i = 0; i < std::max(x.size(), y.size()); ++i)
        steps.push_back(
            {i < x.size() ? x[i] : AxisStep{to.width, 1}, i < y.size() ? y[i] : AxisStep{to.height, 1}});
    return steps;
}

} // namespace mirrolet::platform::desktop::x11
