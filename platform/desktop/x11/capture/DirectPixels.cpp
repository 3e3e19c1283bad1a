#include "platform/desktop/x11/capture/DirectPixels.h"

#include "platform/desktop/x11/server/ExpectErrors.h"
#include "platform/desktop/x11/server/XcbRectangle.h"

namespace mirrolet::platform::desktop::x11 {

namespace {

ServerPixmap makeBlackPixmap(X11Connection& connection, PixelSize size) {
    auto pixmap = makePixmap(connection, size, connection.screen().root_depth);
    const ServerContext context(connection, xcb_generate_id(connection.xcb()));
    xcb_create_gc(connection.xcb(), context.id(), pixmap.id(), 0, nullptr); // The context draws in black.
    const auto all = toRectangle({0, 0, size.width, size.height});
    xcb_poly_fill_rectangle(connection.xcb(), pixmap.id(), context.id(), 1, &all);
    return pixmap;
}

} // namespace

DirectPixels::DirectPixels(X11Connection& connection, xcb_window_t window, PixelSize windowSize,
                           xcb_render_pictformat_t format, PixelRect visible)
    : connection(connection), sourceWindow(window),
      sourceSize(windowSize), stored{makeBlackPixmap(connection, windowSize), format, visible} {}

void DirectPixels::updateCopy() const {
    auto* xcb = connection.xcb();
    const ExpectErrors gone(connection, windowGoneOrReplaced);
    const ServerContext context(connection, xcb_generate_id(xcb));
    const std::uint32_t values[] = {XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS, 0};
    xcb_create_gc(xcb, context.id(), stored.pixmap.id(), XCB_GC_SUBWINDOW_MODE | XCB_GC_GRAPHICS_EXPOSURES,
                  values);
    xcb_copy_area(xcb, sourceWindow, stored.pixmap.id(), context.id(), 0, 0, 0, 0,
                  static_cast<std::uint16_t>(sourceSize.width),
                  static_cast<std::uint16_t>(sourceSize.height));
}

} // namespace mirrolet::platform::desktop::x11
