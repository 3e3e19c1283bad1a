#include "platform/desktop/x11/panel/SoftShadow.h"

#include "platform/desktop/x11/mirror/CornerCoverage.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

namespace {

/// A grid of values from 0 to 1, with its rows top to bottom.
struct Mask {
    Mask(int width, int height)
        : width(width), height(height), values(static_cast<std::size_t>(width) * height) {}
    float& at(int x, int y) { return values[static_cast<std::size_t>(y) * width + x]; }

    int width;
    int height;
    std::vector<float> values;
};

Mask roundedMask(PixelSize rectangle, double radius, int margin) {
    Mask mask(rectangle.width + 2 * margin, rectangle.height + 2 * margin);
    for (int y = 0; y < rectangle.height; ++y)
        for (int x = 0; x < rectangle.width; ++x)
            mask.at(x + margin, y + margin) = static_cast<float>(cornerCoverage(x, y, rectangle, radius));
    return mask;
}

std::vector<float> gaussian(double sigma, int reach) {
    std::vector<float> weights;
    double sum = 0;
    for (int i = -reach; i <= reach; ++i)
        sum += std::exp(-i * i / (2 * sigma * sigma));
    for (int i = -reach; i <= reach; ++i)
        weights.push_back(static_cast<float>(std::exp(-i * i / (2 * sigma * sigma)) / sum));
    return weights;
}

/// Blurs along the rows and turns rows into columns. Two calls blur in both directions.
Mask blurredAndTurned(Mask& mask, const std::vector<float>& weights) {
    const int reach = static_cast<int>(weights.size()) / 2;
    Mask turned(mask.height, mask.width);
    for (int y = 0; y < mask.height; ++y)
        for (int x = 0; x < mask.width; ++x) {
            float sum = 0;
            const int last = std::min(x + reach, mask.width - 1);
            for (int i = std::max(x - reach, 0); i <= last; ++i)
                sum += mask.at(i, y) * weights[static_cast<std::size_t>(i - x + reach)];
            turned.at(y, x) = sum;
        }
    return turned;
}

} // namespace

int reachOf(const PanelShadow& shadow) {
    return static_cast<int>(std::ceil(shadow.blur * 1.5)); // Three standard deviations.
}

Bitmap softShadow(PixelSize rectangle, double radius, const PanelShadow& shadow) {
    const int reach = reachOf(shadow);
    const auto weights = gaussian(std::max(shadow.blur / 2, 0.1), reach);
    auto mask = roundedMask(rectangle, radius, reach);
    mask = blurredAndTurned(mask, weights);
    mask = blurredAndTurned(mask, weights);
    Bitmap bitmap{{mask.width, mask.height}, {}};
    for (const float value : mask.values)
        bitmap.pixels.push_back(static_cast<std::uint32_t>(std::lround(value * shadow.opacity * 255)) << 24);
    return bitmap;
}

} // namespace mirrolet::platform::desktop::x11
