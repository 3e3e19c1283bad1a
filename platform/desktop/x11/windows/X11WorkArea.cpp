#include "platform/desktop/x11/windows/X11WorkArea.h"

#include "platform/desktop/x11/server/Property.h"
#include "platform/desktop/x11/windows/Struts.h"

#include <cstdint>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr std::uint32_t mostWindows = 4096;
constexpr std::uint32_t mostStrutBytes = 64;

struct StrutCookies {
    xcb_get_property_cookie_t partial;
    xcb_get_property_cookie_t whole;
};

std::vector<std::uint32_t> itemsOf(xcb_connection_t* xcb, xcb_get_property_cookie_t cookie, xcb_atom_t type) {
    const auto reply = takeProperty(xcb, cookie);
    return propertyIn(reply).items(type);
}

} // namespace

ReservedEdges X11WorkArea::reserved(PixelRect monitor) {
    xcb_connection_t* xcb = connection.xcb();
    const auto& atoms = connection.atoms();
    const auto listCookie = requestProperty(xcb, connection.root(), atoms._NET_CLIENT_LIST, mostWindows * 4);
    // Asked for, as monitors that come and go change it.
    const auto rootCookie = xcb_get_geometry(xcb, connection.root());
    std::vector<StrutCookies> cookies;
    for (const auto window : itemsOf(xcb, listCookie, XCB_ATOM_WINDOW))
        cookies.push_back({requestProperty(xcb, window, atoms._NET_WM_STRUT_PARTIAL, mostStrutBytes),
                           requestProperty(xcb, window, atoms._NET_WM_STRUT, mostStrutBytes)});
    const XcbReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(xcb, rootCookie, nullptr));
    const PixelSize root = geometry ? PixelSize{geometry->width, geometry->height} : PixelSize{};
    ReservedEdges edges;
    for (const auto& cookie : cookies) {
        const auto partial = itemsOf(xcb, cookie.partial, XCB_ATOM_CARDINAL);
        const auto whole = itemsOf(xcb, cookie.whole, XCB_ATOM_CARDINAL);
        edges = united(edges, reservedBy(partial.empty() ? whole : partial, monitor, root));
    }
    return edges;
}

} // namespace mirrolet::platform::desktop::x11
