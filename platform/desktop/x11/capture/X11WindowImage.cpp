#include "platform/desktop/x11/capture/X11WindowImage.h"

#include "platform/desktop/x11/server/XcbRectangle.h"

#include <cstddef>
#include <cstring>

namespace mirrolet::platform::desktop::x11 {

namespace {
constexpr std::uint32_t opaqueAlpha = 0xff000000;
}

Bitmap X11WindowImage::readBack() const {
    const auto count = static_cast<std::size_t>(size().width) * static_cast<std::size_t>(size().height);
    const auto* stored = theContent->stored();
    if (!stored)
        return {size(), std::vector<std::uint32_t>(count, opaqueAlpha)};
    if (const auto* direct = theContent->direct())
        direct->updateCopy();
    const auto area = toRectangle(stored->visible);
    const auto reply = connection.reply<xcb_get_image_reply>(
        xcb_get_image(connection.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, stored->pixmap.id(), area.x, area.y,
                      area.width, area.height, ~0U));
    const std::size_t bytes = count * sizeof(std::uint32_t);
    // A pixel of depth 24 or 32 is 32 bits with red, green and blue. Pixels of any other depth cannot be read
    // without knowing their layout, which X11 calls the visual.
    if (!reply || (reply->depth != 24 && reply->depth != 32) ||
        static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) < bytes)
        return {};
    Bitmap bitmap{size(), std::vector<std::uint32_t>(count)};
    std::memcpy(bitmap.pixels.data(), xcb_get_image_data(reply.get()), bytes);
    for (auto& pixel : bitmap.pixels)
        pixel |= opaqueAlpha;
    return bitmap;
}

} // namespace mirrolet::platform::desktop::x11
