#pragma once

#include "tests/desktop/harness/Picture.h"

namespace mirrolet::harness {

/// The picture scaled down perfectly: each pixel is the mean of its area.
Picture areaAverage(const Picture& picture, int width, int height);

/// The structural similarity (SSIM) of the brightness of two pictures of one size, as the mean over all
/// windows of 8 × 8 pixels. 1 for equal pictures.
double similarity(const Picture& a, const Picture& b);

} // namespace mirrolet::harness
