#include "platform/desktop/x11/mirror/TranslucentCorners.h"

#include "platform/desktop/PixelRects.h"
#include "platform/desktop/x11/mirror/CornerCoverage.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace mirrolet::platform::desktop::x11 {

namespace {

/// Returns a bitmap of 2 × 2 squares with one round corner in each. The colours are premultiplied, and only
/// the alpha is used.
Bitmap cornerMask(int side, double radius) {
    const int edge = 2 * side;
    Bitmap bitmap{{edge, edge}, std::vector<std::uint32_t>(static_cast<std::size_t>(edge) * edge)};
    for (int y = 0; y < edge; ++y)
        for (int x = 0; x < edge; ++x) {
            const double inside = cornerCoverage(x, y, {edge, edge}, radius);
            const auto alpha = static_cast<std::uint32_t>(std::lround(inside * 255));
            bitmap.pixels[static_cast<std::size_t>(y) * edge + x] = alpha * 0x01010101U;
        }
    return bitmap;
}

} // namespace

TranslucentCorners::TranslucentCorners(X11Connection& connection, const RenderFormats& formats,
                                       PixelSize size, double wantedRadius)
    : connection(connection) {
    const double radius = std::min(wantedRadius, std::min(size.width, size.height) / 2.0);
    side = static_cast<int>(std::floor(radius + 0.5));
    side = std::min(side, std::min(size.width, size.height) / 2);
    if (side <= 0)
        return;
    mask = makeSurface(connection, {2 * side, 2 * side}, 32, formats.argb32);
    upload(connection, mask, cornerMask(side, radius));
    const int right = size.width - side;
    const int bottom = size.height - side;
    places = {PixelRect{0, 0, side, side},
              {right, 0, side, side},
              {0, bottom, side, side},
              {right, bottom, side, side}};
}

void TranslucentCorners::cut(xcb_render_picture_t destination, PixelRect part) const {
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto area = intersection(places[i], part);
        if (isEmpty(area))
            continue;
        const auto maskX = static_cast<int>(i % 2) * side + area.x - places[i].x;
        const auto maskY = static_cast<int>(i / 2) * side + area.y - places[i].y;
        xcb_render_composite(connection.xcb(), XCB_RENDER_PICT_OP_IN_REVERSE, mask.picture.id(),
                             XCB_RENDER_PICTURE_NONE, destination, static_cast<std::int16_t>(maskX),
                             static_cast<std::int16_t>(maskY), 0, 0, static_cast<std::int16_t>(area.x),
                             static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
                             static_cast<std::uint16_t>(area.height));
    }
}

} // namespace mirrolet::platform::desktop::x11
