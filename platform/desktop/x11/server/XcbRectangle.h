#pragma once

#include "platform/desktop/Pixels.h"

#include <xcb/xproto.h>

#include <cstdint>

namespace mirrolet::platform::desktop::x11 {

inline xcb_rectangle_t toRectangle(const PixelRect& rect) {
    return {static_cast<std::int16_t>(rect.x), static_cast<std::int16_t>(rect.y),
            static_cast<std::uint16_t>(rect.width), static_cast<std::uint16_t>(rect.height)};
}

} // namespace mirrolet::platform::desktop::x11
