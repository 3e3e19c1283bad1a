#pragma once

#include <cstdint>
#include <vector>

namespace mirrolet::platform::desktop {

/// A size. All lengths here are in device pixels. The origin is top-left, and y grows downwards. A rectangle
/// on the desktop is in root-window coordinates.
struct PixelSize {
    int width = 0;
    int height = 0;
    friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

/// Pixels in memory: premultiplied ARGB, 32 bits each in native byte order, rows top to bottom without
/// padding.
struct Bitmap {
    PixelSize size;
    std::vector<std::uint32_t> pixels;
};

} // namespace mirrolet::platform::desktop
