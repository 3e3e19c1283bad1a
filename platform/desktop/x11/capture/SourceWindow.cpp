#include "platform/desktop/x11/capture/SourceWindow.h"

#include "platform/desktop/x11/server/Property.h"

namespace mirrolet::platform::desktop::x11 {

namespace {
constexpr std::uint32_t bytesOfExtents = 16;
}

std::optional<SourceWindow> SourceWindow::query(X11Connection& connection, xcb_window_t window) {
    auto* xcb = connection.xcb();
    const auto attributesCookie = xcb_get_window_attributes(xcb, window);
    const auto geometryCookie = xcb_get_geometry(xcb, window);
    const auto extentsCookie =
        requestProperty(connection, window, connection.atoms()._GTK_FRAME_EXTENTS, bytesOfExtents);
    const auto attributes = connection.reply<xcb_get_window_attributes_reply>(attributesCookie, windowGone);
    const auto geometry = connection.reply<xcb_get_geometry_reply>(geometryCookie, windowGone);
    const auto extents = takeProperty(connection, extentsCookie);
    if (!attributes || !geometry)
        return std::nullopt;
    return SourceWindow{.size = {geometry->width, geometry->height},
                        .borderWidth = geometry->border_width,
                        .depth = geometry->depth,
                        .visual = attributes->visual,
                        .shadow = FrameExtents::from(extents),
                        .isInputOnly = attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY,
                        .isViewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE};
}

} // namespace mirrolet::platform::desktop::x11
