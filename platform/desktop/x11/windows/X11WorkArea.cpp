#include "platform/desktop/x11/windows/X11WorkArea.h"

#include "platform/desktop/x11/server/Property.h"
#include "platform/desktop/x11/windows/Struts.h"

#include <cstdint>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr std::uint32_t mostWindows = 4096;
constexpr std::uint32_t mostStrutBytes = 64;
constexpr std::uint32_t workAreaBytes = 16; ///< Of the first workspace: x, y, width, height.

struct StrutCookies {
    xcb_get_property_cookie_t partial;
    xcb_get_property_cookie_t whole;
};

} // namespace

ReservedEdges X11WorkArea::reserved(PixelRect monitor) {
    const auto& atoms = connection.atoms();
    const auto listCookie =
        requestProperty(connection, connection.root(), atoms._NET_CLIENT_LIST, mostWindows * 4);
    // The root window's size is asked for each time, because the size changes when monitors are added or
    // removed.
    const auto rootCookie = xcb_get_geometry(connection.xcb(), connection.root());
    const auto areaCookie =
        requestProperty(connection, connection.root(), atoms._NET_WORKAREA, workAreaBytes);
    std::vector<StrutCookies> cookies;
    for (const auto window : takeProperty(connection, listCookie).items(XCB_ATOM_WINDOW))
        cookies.push_back({requestProperty(connection, window, atoms._NET_WM_STRUT_PARTIAL, mostStrutBytes),
                           requestProperty(connection, window, atoms._NET_WM_STRUT, mostStrutBytes)});
    const auto geometry = connection.reply<xcb_get_geometry_reply>(rootCookie);
    const PixelSize root = geometry ? PixelSize{geometry->width, geometry->height} : PixelSize{};
    ReservedEdges edges =
        outsideOf(takeProperty(connection, areaCookie).items(XCB_ATOM_CARDINAL), monitor, root);
    for (const auto& cookie : cookies) {
        const auto partial = takeProperty(connection, cookie.partial).items(XCB_ATOM_CARDINAL);
        const auto whole = takeProperty(connection, cookie.whole).items(XCB_ATOM_CARDINAL);
        edges = united(edges, reservedBy(partial.empty() ? whole : partial, monitor, root));
    }
    return edges;
}

} // namespace mirrolet::platform::desktop::x11
