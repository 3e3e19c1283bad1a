#include "platform/desktop/x11/windows/WindowManagerCheck.h"

#include "platform/desktop/x11/server/Property.h"

namespace mirrolet::platform::desktop::x11 {

namespace {

xcb_get_property_cookie_t ask(X11Connection& connection, xcb_window_t window) {
    return requestProperty(connection, window, connection.atoms()._NET_SUPPORTING_WM_CHECK, 8);
}

xcb_window_t take(X11Connection& connection, xcb_get_property_cookie_t cookie) {
    const auto items = takeProperty(connection, cookie).items(XCB_ATOM_WINDOW);
    return items.size() == 1 ? items[0] : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

} // namespace

WindowManagerCheck::WindowManagerCheck(X11Connection& connection)
    : connection(connection), cookie(ask(connection, connection.root())) {}

bool WindowManagerCheck::askManager() {
    manager = take(connection, cookie);
    if (manager == XCB_WINDOW_NONE)
        return false;
    cookie = ask(connection, manager);
    return true;
}

bool WindowManagerCheck::managerLives() {
    return take(connection, cookie) == manager;
}

} // namespace mirrolet::platform::desktop::x11
