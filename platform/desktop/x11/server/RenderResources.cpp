#include "platform/desktop/x11/server/RenderResources.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

ServerPicture makePicture(X11Connection& connection, xcb_drawable_t drawable,
                          xcb_render_pictformat_t format) {
    constexpr std::string_view filter = "bilinear";
    const auto id = xcb_generate_id(connection.xcb());
    const std::uint32_t repeat = XCB_RENDER_REPEAT_PAD;
    xcb_render_create_picture(connection.xcb(), id, drawable, format, XCB_RENDER_CP_REPEAT, &repeat);
    xcb_render_set_picture_filter(connection.xcb(), id, filter.size(), filter.data(), 0, nullptr);
    return {connection, id};
}

ServerPixmap makePixmap(X11Connection& connection, PixelSize size, std::uint8_t depth) {
    const auto id = xcb_generate_id(connection.xcb());
    xcb_create_pixmap(connection.xcb(), depth, id, connection.root(), static_cast<std::uint16_t>(size.width),
                      static_cast<std::uint16_t>(size.height));
    return {connection, id};
}

Surface makeSurface(X11Connection& connection, PixelSize size, std::uint8_t depth,
                    xcb_render_pictformat_t format) {
    auto pixmap = makePixmap(connection, size, depth);
    auto picture = makePicture(connection, pixmap.id(), format);
    return {std::move(pixmap), std::move(picture), size};
}

void upload(X11Connection& connection, const Surface& surface, const Bitmap& bitmap) {
    constexpr std::size_t requestHead =
        64; // PutImage's own fields need fewer bytes, even with the long length field.
    const auto context = xcb_generate_id(connection.xcb());
    xcb_create_gc(connection.xcb(), context, surface.pixmap.id(), 0, nullptr);
    const ServerContext owner(connection, context);
    const std::size_t rowBytes = static_cast<std::size_t>(bitmap.size.width) * sizeof(std::uint32_t);
    const std::size_t limit = std::size_t{xcb_get_maximum_request_length(connection.xcb())} * 4 - requestHead;
    const int rowsAtOnce = static_cast<int>(std::clamp<std::size_t>(limit / rowBytes, 1, 1 << 14));
    for (int y = 0; y < bitmap.size.height; y += rowsAtOnce) {
        const int rows = std::min(rowsAtOnce, bitmap.size.height - y);
        const auto* start = bitmap.pixels.data() + static_cast<std::size_t>(y) * bitmap.size.width;
        xcb_put_image(connection.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, surface.pixmap.id(), context,
                      static_cast<std::uint16_t>(bitmap.size.width), static_cast<std::uint16_t>(rows), 0,
                      static_cast<std::int16_t>(y), 0, 32, static_cast<std::uint32_t>(rowBytes * rows),
                      reinterpret_cast<const std::uint8_t*>(start));
    }
}

} // namespace mirrolet::platform::desktop::x11
