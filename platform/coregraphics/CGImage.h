#pragma once

#include "platform/coregraphics/CGWindowList.h"
#include "platform/coregraphics/Geometry.h"

#include <cstdint>
#include <memory>

namespace mirrolet::platform {

namespace desktop {
class WindowImage;
}

/// A picture of a window. The pixels stay on the window server. As long as the window does not change, each
/// capture returns the same object. Any thread.
using CGImage = desktop::WindowImage;
using CGImageRef = std::shared_ptr<const CGImage>;

/// Returns the width in pixels.
int CGImageGetWidth(const CGImage& image);
int CGImageGetHeight(const CGImage& image);

inline constexpr std::uint32_t kCGWindowListOptionIncludingWindow = 8;
inline constexpr std::uint32_t kCGWindowImageBoundsIgnoreFraming = 1;
inline constexpr std::uint32_t kCGWindowImageBestResolution = 8;
/// This value, passed to CGWindowListCreateImage() as `screenBounds`, stands for the bounds of the window.
inline constexpr CGRect CGRectNull{};

/// Captures one window alone, without its shadow, at full pixel resolution. `screenBounds` must be
/// CGRectNull, and the options must be the constants above. Returns nullptr for other arguments, if the
/// window is gone, or if the capture fails for another reason, which is logged. Any thread.
CGImageRef CGWindowListCreateImage(CGRect screenBounds, std::uint32_t listOption, CGWindowID window,
                                   std::uint32_t imageOption);

} // namespace mirrolet::platform
