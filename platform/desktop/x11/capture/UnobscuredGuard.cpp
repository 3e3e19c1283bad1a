#include "platform/desktop/x11/capture/UnobscuredGuard.h"

#include "platform/desktop/PixelRects.h"
#include "platform/desktop/x11/server/ExpectErrors.h"
#include "platform/desktop/x11/server/XcbRectangle.h"

#include <xcb/composite.h>

namespace mirrolet::platform::desktop::x11 {

namespace {

ServerRegion makeRegion(X11Connection& connection, const PixelRect& rect) {
    const auto id = xcb_generate_id(connection.xcb());
    const auto area = toRectangle(rect);
    xcb_xfixes_create_region(connection.xcb(), id, 1, &area);
    return {connection, id};
}

/// Returns the part of a window that the screen shows, in window coordinates. For a redirected window,
/// returns the part that the screen would show without the redirection.
ServerRegion visibleRegion(X11Connection& connection, xcb_window_t window) {
    const auto id = xcb_generate_id(connection.xcb());
    xcb_composite_create_region_from_border_clip(connection.xcb(), id, window);
    return {connection, id};
}

/// Waits for the bounding box of a region. Returns none if the window is gone, because the server then made
/// no region.
std::optional<PixelRect> boundsOf(const X11Connection& connection, xcb_xfixes_fetch_region_cookie_t cookie) {
    const auto reply = connection.reply<xcb_xfixes_fetch_region_reply>(cookie, {XError::region});
    if (!reply)
        return std::nullopt;
    if (reply->extents.width == 0 || reply->extents.height == 0)
        return PixelRect{};
    return PixelRect{reply->extents.x, reply->extents.y, reply->extents.width, reply->extents.height};
}

} // namespace

std::optional<ObscuredParts> obscuredParts(X11Connection& connection, xcb_window_t window,
                                           PixelRect picture) {
    auto* xcb = connection.xcb();
    const ExpectErrors gone(connection, windowAndResourcesGone);
    const auto wanted = makeRegion(connection, picture);
    const auto visible = visibleRegion(connection, window);
    const ServerRegion shape{connection, xcb_generate_id(xcb)};
    xcb_xfixes_create_region_from_window(xcb, shape.id(), window, XCB_SHAPE_SK_BOUNDING);
    xcb_xfixes_intersect_region(xcb, shape.id(), wanted.id(), shape.id());
    xcb_xfixes_subtract_region(xcb, wanted.id(), visible.id(), wanted.id());
    xcb_xfixes_subtract_region(xcb, shape.id(), visible.id(), shape.id());
    const auto ofPictureCookie = xcb_xfixes_fetch_region(xcb, wanted.id());
    const auto ofShapeCookie = xcb_xfixes_fetch_region(xcb, shape.id());
    const auto ofPicture = boundsOf(connection, ofPictureCookie);
    const auto ofShape = boundsOf(connection, ofShapeCookie);
    if (!ofPicture || !ofShape)
        return std::nullopt;
    return ObscuredParts{*ofPicture, *ofShape};
}

UnobscuredGuard::UnobscuredGuard(X11Connection& connection, xcb_window_t window, PixelRect picture)
    : connection(connection), window(window),
      all(makeRegion(connection, {-reach, -reach, 2 * reach, 2 * reach})),
      picture(makeRegion(connection, picture)) {}

void UnobscuredGuard::close(xcb_render_picture_t destination) const {
    auto* xcb = connection.xcb();
    const auto region = visibleRegion(connection, window);
    // One obscured pixel has to block all drawing. Each obscured pixel is therefore expanded to a rectangle
    // that covers every possible position, and the server may draw only outside of these rectangles.
    constexpr std::uint16_t everywhere = 2 * reach;
    xcb_xfixes_subtract_region(xcb, picture.id(), region.id(), region.id());
    xcb_xfixes_expand_region(xcb, region.id(), region.id(), everywhere, everywhere, everywhere, everywhere);
    xcb_xfixes_subtract_region(xcb, all.id(), region.id(), region.id());
    xcb_xfixes_set_picture_clip_region(xcb, destination, region.id(), 0, 0);
}

void UnobscuredGuard::open(xcb_render_picture_t destination) const {
    xcb_xfixes_set_picture_clip_region(connection.xcb(), destination, XCB_NONE, 0, 0);
}

} // namespace mirrolet::platform::desktop::x11
