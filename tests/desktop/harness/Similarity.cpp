#include "tests/desktop/harness/Similarity.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace mirrolet::harness {

namespace {

/// Holds one number for each pixel of a picture, such as its brightness.
struct Plane {
    int width;
    int height;
    std::vector<double> values;

    [[nodiscard]] double at(int x, int y) const { return values[static_cast<std::size_t>(y) * width + x]; }
};

/// Returns how much of a pixel, from 0 to 1, lies between `from` and `to`. The pixel reaches from `pixel` to
/// `pixel` + 1.
double overlap(int pixel, double from, double to) {
    return std::min(pixel + 1.0, to) - std::max<double>(pixel, from);
}

std::uint32_t areaMean(const Picture& picture, double left, double top, double right, double bottom) {
    std::array<double, 3> sums{};
    for (int y = static_cast<int>(top); y < std::min<double>(bottom, picture.height); ++y)
        for (int x = static_cast<int>(left); x < std::min<double>(right, picture.width); ++x)
            for (unsigned i = 0; i < sums.size(); ++i)
                sums.at(i) +=
                    overlap(x, left, right) * overlap(y, top, bottom) * (picture.at(x, y) >> 8 * i & 0xff);
    std::uint32_t colour = 0;
    for (unsigned i = 0; i < sums.size(); ++i)
        colour |= static_cast<std::uint32_t>(std::lround(sums.at(i) / ((right - left) * (bottom - top))))
                  << 8 * i;
    return colour;
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
    Picture result{width, height, {}};
    const double across = static_cast<double>(picture.width) / width;
    const double down = static_cast<double>(picture.height) / height;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            result.pixels.push_back(
                areaMean(picture, x * across, y * down, (x + 1) * across, (y + 1) * down));
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
