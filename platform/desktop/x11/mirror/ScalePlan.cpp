#include "platform/desktop/x11/mirror/ScalePlan.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr int largestPixmap = 32767;
// The largest ratios at which the uneven step still loses little. Each is named for the size that the step
// makes.
constexpr double toTarget = 1.5;
constexpr double toDouble = 3.3;
constexpr double halvedToDouble = 6.5;
constexpr double toFourfold = 6.8;

struct AxisPlan {
    int halvings; ///< Exact halvings before the uneven step.
    int multiple; ///< The uneven step makes this multiple of the target.
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
    double covered = from; // The picture's share of `pixels`. Halving an odd number adds half a pixel.
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
