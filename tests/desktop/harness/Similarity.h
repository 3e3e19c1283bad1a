#pragma once

#include "tests/desktop/harness/Picture.h"

namespace mirrolet::harness {

/// Scales the picture down. Each pixel of the result is the exact mean of the area of `picture` that the
/// pixel covers.
Picture areaAverage(const Picture& picture, int width, int height);

/// Returns the structural similarity (SSIM) of the brightness of two pictures. The pictures must have the
/// same size. The result is the mean over all squares of 8 × 8 pixels. For equal pictures the result is 1.
double similarity(const Picture& a, const Picture& b);

} // namespace mirrolet::harness
