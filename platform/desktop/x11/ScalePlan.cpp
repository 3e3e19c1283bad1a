#include "platform/desktop/x11/ScalePlan.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr int largestPixmap = 32767;
constexpr double oneStepIsGoodTo = 1.7;    // Above, a single bilinear step drops too much.
constexpr double doubleIsGoodTo = 3.6;     // Above, the uneven step to twice the target does.
constexpr double halvedOnceIsGoodTo = 6.5; // Above, four times the target is better, and no dearer.

struct Course {
    int halvings; ///< Exact ones, at the start.
    int multiple; ///< Of the target, where the uneven step goes.
};

Course courseFor(double ratio) {
    if (ratio <= oneStepIsGoodTo)
        return {0, 1};
    if (ratio <= doubleIsGoodTo)
        return {0, 2};
    if (ratio <= halvedOnceIsGoodTo)
        return {1, 2};
    return {static_cast<int>(std::floor(std::log2(ratio / 4))), 4};
}

} // namespace

std::vector<AxisStep> planAxis(int from, int to) {
    auto [halvings, multiple] = courseFor(static_cast<double>(from) / to);
    while (multiple > 1 && to > largestPixmap / multiple)
        multiple /= 2;
    std::vector<AxisStep> steps;
    int pixels = from;
    double covered = from; // What of them is picture: an odd row more makes half a pixel too many.
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
