#pragma once

#include "tests/desktop/harness/Picture.h"

namespace mirrolet::harness {

/// The picture scaled down so that every pixel is the mean of the area that it covers: what a perfect scaling
/// gives.
Picture areaAverage(const Picture& picture, int width, int height);

/// Structural similarity (SSIM) of the brightness of two pictures of one size, mean over all windows of 8 × 8
/// pixels: 1 for equal pictures.
double similarity(const Picture& a, const Picture& b);

} // namespace mirrolet::harness
