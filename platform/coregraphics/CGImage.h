#pragma once

#include "platform/coregraphics/CGWindowList.h"
#include "platform/coregraphics/Geometry.h"

#include <cstdint>
#include <memory>

namespace mirrolet::platform {

namespace desktop {
class WindowImage;
}

/// A picture of a window. The pixels stay with the window server. As long as the window does not change, each
/// capture gives the same object. Any thread.
using CGImage = desktop::WindowImage;
using CGImageRef = std::shared_ptr<const CGImage>;

/// Returns the width in pixels.
int CGImageGetWidth(const CGImage& image);
int CGImageGetHeight(const CGImage& image);

inline constexpr std::uint32_t kCGWindowListOptionIncludingWindow = 8;
inline constexpr std::uint32_t kCGWindowImageBoundsIgnoreFraming = 1;
inline constexpr std::uint32_t kCGWindowImageBestResolution = 8;
/// Stands for the bounds of the window itself.
inline constexpr CGRect CGRectNull{};

/// Captures one window alone, without its shadow, at full pixel resolution. Returns nullptr once the window
/// is gone. Other options are not offered and also return nullptr. A capture that fails for another reason is
/// logged. Any thread.
CGImageRef CGWindowListCreateImage(CGRect screenBounds, std::uint32_t listOption, CGWindowID window,
                                   std::uint32_t imageOption);

} // namespace mirrolet::platform
