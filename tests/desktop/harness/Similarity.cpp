#include "tests/desktop/harness/Similarity.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace mirrolet::harness {

namespace {

/// One channel of a picture, or values that are computed from a channel.
struct Plane {
    int width;
    int height;
    std::vector<double> values;

    [[nodiscard]] double at(int x, int y) const { return values[static_cast<std::size_t>(y) * width + x]; }
};

Plane channel(const Picture& picture, unsigned shift) {
    Plane plane{picture.width, picture.height, {}};
    for (const auto pixel : picture.pixels)
        plane.values.push_back(pixel >> shift & 0xff);
    return plane;
}

Plane transposed(const Plane& plane) {
    Plane result{plane.height, plane.width, std::vector<double>(plane.values.size())};
    for (int y = 0; y < plane.height; ++y)
        for (int x = 0; x < plane.width; ++x)
            result.values[static_cast<std::size_t>(x) * plane.height + y] = plane.at(x, y);
    return result;
}

Plane averagedRows(const Plane& plane, int width) {
    Plane result{width, plane.height, {}};
    const double ratio = static_cast<double>(plane.width) / width;
    for (int y = 0; y < plane.height; ++y)
        for (int x = 0; x < width; ++x) {
            const double from = x * ratio;
            const double to = std::min((x + 1) * ratio, static_cast<double>(plane.width));
            double sum = 0;
            for (int i = static_cast<int>(from); i < to; ++i)
                sum += plane.at(i, y) * (std::min(i + 1.0, to) - std::max<double>(i, from));
            result.values.push_back(sum / ratio);
        }
    return result;
}

Plane brightness(const Picture& picture) {
    Plane plane{picture.width, picture.height, {}};
    for (const auto pixel : picture.pixels)
        plane.values.push_back(0.299 * (pixel >> 16 & 0xff) + 0.587 * (pixel >> 8 & 0xff) +
                               0.114 * (pixel & 0xff));
    return plane;
}

struct Sums {
    double a = 0, b = 0, aa = 0, bb = 0, ab = 0;
};

double ofWindow(const Sums& sums, double count) {
    constexpr double c1 = 0.01 * 255 * 0.01 * 255;
    constexpr double c2 = 0.03 * 255 * 0.03 * 255;
    const double meanA = sums.a / count;
    const double meanB = sums.b / count;
    const double varianceA = sums.aa / count - meanA * meanA;
    const double varianceB = sums.bb / count - meanB * meanB;
    const double covariance = sums.ab / count - meanA * meanB;
    return (2 * meanA * meanB + c1) * (2 * covariance + c2) /
           ((meanA * meanA + meanB * meanB + c1) * (varianceA + varianceB + c2));
}

} // namespace

Picture areaAverage(const Picture& picture, int width, int height) {
    Picture result{width, height, std::vector<std::uint32_t>(static_cast<std::size_t>(width) * height)};
    for (const unsigned shift : {0U, 8U, 16U}) {
        const auto rows = averagedRows(channel(picture, shift), width);
        const auto plane = transposed(averagedRows(transposed(rows), height));
        for (std::size_t i = 0; i < result.pixels.size(); ++i)
            result.pixels[i] |= static_cast<std::uint32_t>(std::lround(plane.values[i])) << shift;
    }
    return result;
}

double similarity(const Picture& a, const Picture& b) {
    constexpr int side = 8;
    constexpr int stride = 4;
    const auto first = brightness(a);
    const auto second = brightness(b);
    double total = 0;
    int windows = 0;
    for (int top = 0; top + side <= a.height; top += stride)
        for (int left = 0; left + side <= a.width; left += stride, ++windows) {
            Sums sums;
            for (int y = top; y < top + side; ++y)
                for (int x = left; x < left + side; ++x) {
                    const double p = first.at(x, y);
                    const double q = second.at(x, y);
                    sums.a += p;
                    sums.b += q;
                    sums.aa += p * p;
                    sums.bb += q * q;
                    sums.ab += p * q;
                }
            total += ofWindow(sums, side * side);
        }
    return windows == 0 ? 0 : total / windows;
}

} // namespace mirrolet::harness
