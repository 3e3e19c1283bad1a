#include "platform/desktop/x11/windows/FrameExtents.h"

#include <algorithm>
#include <cstdint>

namespace mirrolet::platform::desktop::x11 {

namespace {
constexpr std::uint32_t largestShadow = 1024;
}

FrameExtents FrameExtents::from(const Property& property) {
    const auto values = property.items(XCB_ATOM_CARDINAL);
    if (values.size() != 4 ||
        std::any_of(values.begin(), values.end(), [](std::uint32_t value) { return value > largestShadow; }))
        return {};
    return {static_cast<int>(values[0]), static_cast<int>(values[1]), static_cast<int>(values[2]),
            static_cast<int>(values[3])};
}

PixelRect FrameExtents::visiblePart(PixelSize window) const {
    const PixelRect part{left, top, window.width - left - right, window.height - top - bottom};
    return part.width > 0 && part.height > 0 ? part : PixelRect{0, 0, window.width, window.height};
}

} // namespace mirrolet::platform::desktop::x11
