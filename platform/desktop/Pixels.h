#pragma once

#include <cstdint>
#include <vector>

namespace mirrolet::platform::desktop {

/// A size in device pixels.
struct PixelSize {
    int width = 0;
    int height = 0;
    friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

/// A rectangle in device pixels. The origin is at the top left, and y grows downwards. A rectangle on the
/// desktop is in root-window coordinates.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

/// An image in memory. Each pixel is premultiplied ARGB in 32 bits of native byte order. The rows are stored
/// from top to bottom without padding.
struct Bitmap {
    PixelSize size;
    std::vector<std::uint32_t> pixels;
};

} // namespace mirrolet::platform::desktop
