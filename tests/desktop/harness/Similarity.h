#pragma once

#include "tests/desktop/harness/Picture.h"

namespace mirrolet::harness {

/// Scales the picture down perfectly. Each pixel is the mean of the area that it replaces.
Picture areaAverage(const Picture& picture, int width, int height);

/// Returns the structural similarity (SSIM) of the brightness of two pictures of one size. The result is the
/// mean over all windows of 8 × 8 pixels, and 1 for equal pictures.
double similarity(const Picture& a, const Picture& b);

} // namespace mirrolet::harness
