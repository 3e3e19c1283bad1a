#include "platform/desktop/x11/FrameExtents.h"

#include <algorithm>
#include <cstdint>

namespace mirrolet::platform::desktop::x11 {

namespace {
constexpr std::uint32_t largestShadow = 1024;
}

FrameExtents FrameExtents::from(const xcb_get_property_reply_t* reply) {
    if (!reply || reply->type != XCB_ATOM_CARDINAL || reply->format != 32 ||
        xcb_get_property_value_length(reply) != 16)
        return {};
    const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply));
    if (std::any_of(values, values + 4, [](std::uint32_t value) { return value > largestShadow; }))
        return {};
    return {static_cast<int>(values[0]), static_cast<int>(values[1]), static_cast<int>(values[2]),
            static_cast<int>(values[3])};
}

PixelRect FrameExtents::visiblePart(PixelSize window) const {
    const PixelRect part{left, top, window.width - left - right, window.height - top - bottom};
    return part.width > 0 && part.height > 0 ? part : PixelRect{0, 0, window.width, window.height};
}

} // namespace mirrolet::platform::desktop::x11
