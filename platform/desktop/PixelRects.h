#pragma once

#include "platform/desktop/Pixels.h"

#include <algorithm>
#include <cstdint>

namespace mirrolet::platform::desktop {

inline bool isEmpty(const PixelRect& rect) {
    return rect.width <= 0 || rect.height <= 0;
}

inline PixelRect intersection(const PixelRect& a, const PixelRect& b) {
    const int left = std::max(a.x, b.x);
    const int top = std::max(a.y, b.y);
    const PixelRect both{left, top, std::min(a.x + a.width, b.x + b.width) - left,
                         std::min(a.y + a.height, b.y + b.height) - top};
    return isEmpty(both) ? PixelRect{} : both;
}

/// Returns the smallest rectangle that holds both rectangles.
inline PixelRect united(const PixelRect& a, const PixelRect& b) {
    if (isEmpty(a))
        return b;
    if (isEmpty(b))
        return a;
    const int left = std::min(a.x, b.x);
    const int top = std::min(a.y, b.y);
    return {left, top, std::max(a.x + a.width, b.x + b.width) - left,
            std::max(a.y + a.height, b.y + b.height) - top};
}

inline bool contains(const PixelRect& outer, const PixelRect& inner) {
    return intersection(outer, inner) == inner;
}

} // namespace mirrolet::platform::desktop
