#include "platform/desktop/x11/capture/WindowContent.h"

#include "platform/desktop/PixelRects.h"
#include "platform/desktop/x11/server/XcbRectangle.h"

#include <cstddef>

namespace mirrolet::platform::desktop::x11 {

namespace {
constexpr std::size_t damagesKept = 32; // Two seconds of ticks: who drew longer ago draws all anew.
}

std::shared_ptr<WindowContent> WindowContent::inPlace(X11Connection& connection, xcb_window_t window,
                                                      PixelSize size, xcb_render_pictformat_t format,
                                                      PixelRect picture) {
    auto copy = makePixmap(connection, size, connection.screen().root_depth);
    const ServerContext context(connection, xcb_generate_id(connection.xcb()));
    xcb_create_gc(connection.xcb(), context.id(), copy.id(), 0, nullptr); // Draws with 0, which is black.
    const auto all = toRectangle({0, 0, size.width, size.height});
    xcb_poly_fill_rectangle(connection.xcb(), copy.id(), context.id(), 1, &all);
    auto content = std::make_shared<WindowContent>(std::move(copy), format, picture);
    content->copySize = size;
    content->window = window;
    return content;
}

void WindowContent::copyFromPlace(X11Connection& connection) const {
    auto* xcb = connection.xcb();
    const ServerContext context(connection, xcb_generate_id(xcb));
    const std::uint32_t values[] = {XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS, 0};
    xcb_create_gc(xcb, context.id(), pixmap.id(), XCB_GC_SUBWINDOW_MODE | XCB_GC_GRAPHICS_EXPOSURES, values);
    xcb_copy_area(xcb, window, pixmap.id(), context.id(), 0, 0, 0, 0,
                  static_cast<std::uint16_t>(copySize.width), static_cast<std::uint16_t>(copySize.height));
}

void WindowContent::noteDamage(PixelRect area) {
    const std::lock_guard guard(lock);
    recent.push_back(area);
    ++noted;
    if (recent.size() > damagesKept)
        recent.pop_front();
}

std::uint64_t WindowContent::age() const {
    const std::lock_guard guard(lock);
    return noted;
}

PixelRect WindowContent::changedBetween(std::uint64_t older, std::uint64_t newer) const {
    const std::lock_guard guard(lock);
    const PixelRect all{0, 0, picture.width, picture.height};
    if (older > newer || newer > noted || noted - older > recent.size())
        return all;
    PixelRect changed;
    for (std::uint64_t number = older; number < newer; ++number)
        changed = united(changed, recent[recent.size() - (noted - number)]);
    return intersection(changed, all);
}

void WindowContent::watch(ImageViewer& viewer) const {
    const std::lock_guard guard(viewersLock);
    viewers.push_back(&viewer);
}

void WindowContent::unwatch(ImageViewer& viewer) const {
    const std::lock_guard guard(viewersLock);
    std::erase(viewers, &viewer);
}

void WindowContent::tellViewers(const std::shared_ptr<const X11WindowImage>& image) const {
    const std::lock_guard guard(viewersLock);
    for (auto* viewer : viewers)
        viewer->show(image);
}

} // namespace mirrolet::platform::desktop::x11
