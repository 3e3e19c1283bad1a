#include "platform/desktop/x11/capture/X11WindowImage.h"

#include <cstddef>
#include <cstring>

namespace mirrolet::platform::desktop::x11 {

namespace {
constexpr std::uint32_t opaqueAlpha = 0xff000000;
}

Bitmap X11WindowImage::readBack() const {
    const auto picture = theContent->pictureRect();
    const std::size_t count = static_cast<std::size_t>(picture.width) * picture.height;
    if (theContent->pixmapId() == 0)
        return {theContent->size(), std::vector<std::uint32_t>(count, opaqueAlpha)};
    if (theContent->windowInPlace() != 0)
        theContent->copyFromPlace(connection);
    const auto reply = connection.reply<xcb_get_image_reply>(xcb_get_image(
        connection.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, theContent->pixmapId(),
        static_cast<std::int16_t>(picture.x), static_cast<std::int16_t>(picture.y),
        static_cast<std::uint16_t>(picture.width), static_cast<std::uint16_t>(picture.height), ~0U));
    const std::size_t bytes = count * sizeof(std::uint32_t);
    // Only depths that keep a pixel in 32 bits as red, green, blue; the rest cannot be read without their
    // visual.
    if (!reply || (reply->depth != 24 && reply->depth != 32) ||
        static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) < bytes)
        return {};
    Bitmap bitmap{theContent->size(), std::vector<std::uint32_t>(count)};
    std::memcpy(bitmap.pixels.data(), xcb_get_image_data(reply.get()), bytes);
    for (auto& pixel : bitmap.pixels)
        pixel |= opaqueAlpha;
    return bitmap;
}

} // namespace mirrolet::platform::desktop::x11
