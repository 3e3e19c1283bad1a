#include "platform/desktop/x11/capture/X11FrameImporter.h"

#include "platform/desktop/PixelRects.h"
#include "platform/desktop/x11/server/RenderFormats.h"
#include "platform/foundation/NSLog.h"

#include <cstddef>
#include <limits>
#include <string>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr std::uint8_t depth = 24;
constexpr std::size_t bytesPerPixel = 4;
constexpr int longestSide = 32767; ///< The server's coordinates have 16 bits, one of them for the sign.

/// Returns whether the frame lies inside its memory and its numbers fit into the server's requests. The
/// numbers come from another process.
bool isReadable(const SharedFrame& frame) {
    const auto& [memory, offset, stride, size, visible] = frame;
    if (!memory || isEmpty(visible) || !contains({0, 0, size.width, size.height}, visible) ||
        size.width > longestSide || size.height > longestSide)
        return false;
    const auto rows = static_cast<std::size_t>(size.height);
    return stride % bytesPerPixel == 0 && stride / bytesPerPixel >= static_cast<std::size_t>(size.width) &&
           stride / bytesPerPixel <= std::numeric_limits<std::uint16_t>::max() && offset <= memory->size &&
           offset <= std::numeric_limits<std::uint32_t>::max() && rows <= (memory->size - offset) / stride;
}

} // namespace

std::unique_ptr<FrameImporter> X11FrameImporter::make(X11Connection& connection) {
    const auto format = RenderFormats(connection).opaque24;
    if (connection.extensions().shm && format != 0)
        return std::unique_ptr<FrameImporter>(new X11FrameImporter(connection, format));
    NSLog("Mirrolet: windows cannot be mirrored, because the X server cannot read the memory of other "
          "programs (MIT-SHM 1.2)");
    return nullptr;
}

std::shared_ptr<const WindowImage> X11FrameImporter::import(const SharedFrame& frame,
                                                            std::shared_ptr<const void> source) {
    if (!isReadable(frame)) {
        logOnce("a frame does not fit into its memory");
        return nullptr;
    }
    const PixelSize size{frame.visible.width, frame.visible.height};
    if (!content || content->size() != size)
        makeContent(size);
    const auto segment = segments.attach(frame.memory);
    if (segment == 0) {
        logOnce("the X server cannot map a frame's memory");
        return nullptr;
    }
    const auto copied = copy(frame, segment);
    content->noteDamageEverywhere();
    auto image = std::make_shared<const X11WindowImage>(connection, std::move(source), content);
    // The viewers of this content have its last image, and draw the change themselves if they can. They send
    // their requests along with the copy, so that the server is woken once.
    auto drawn = content->showToViewers(image) ? latest.lock() : nullptr;
    // If the memory has become smaller, the server has freed the segment, and the copy fails.
    if (!connection.succeeds(copied, {XError::unknown})) {
        segments.forget(frame.memory);
        logOnce("the X server cannot read a frame");
        return nullptr;
    }
    if (drawn && drawn->content() == content)
        return drawn;
    latest = image;
    return image;
}

std::shared_ptr<const WindowImage> X11FrameImporter::lastImage(std::shared_ptr<const void> source) {
    auto image = latest.lock();
    if (!content || content->serial() == 0 || (image && image->content() == content))
        return image;
    image = std::make_shared<const X11WindowImage>(connection, std::move(source), content);
    latest = image;
    return image;
}

void X11FrameImporter::makeContent(PixelSize size) {
    auto pixmap = makePixmap(connection, size, depth);
    context = {connection, xcb_generate_id(connection.xcb())};
    xcb_create_gc(connection.xcb(), context.id(), pixmap.id(), 0, nullptr);
    content = std::make_shared<WindowContent>(
        RedirectedPixels{{std::move(pixmap), format, {0, 0, size.width, size.height}}, 0});
}

/// Asks the server to copy the visible part.
xcb_void_cookie_t X11FrameImporter::copy(const SharedFrame& frame, xcb_shm_seg_t segment) {
    const auto number = [](auto value) { return static_cast<std::uint16_t>(value); };
    constexpr std::uint8_t withEvent = 0;
    return xcb_shm_put_image_checked(
        connection.xcb(), content->stored()->pixmap.id(), context.id(), number(frame.stride / bytesPerPixel),
        number(frame.size.height), number(frame.visible.x), number(frame.visible.y),
        number(frame.visible.width), number(frame.visible.height), 0, 0, depth, XCB_IMAGE_FORMAT_Z_PIXMAP,
        withEvent, segment, static_cast<std::uint32_t>(frame.offset));
}

void X11FrameImporter::logOnce(const char* problem) {
    if (!std::exchange(hasLogged, true))
        NSLog(std::string("Mirrolet: a mirror misses frames: ") + problem);
}

} // namespace mirrolet::platform::desktop::x11
