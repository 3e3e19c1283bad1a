#include "platform/desktop/x11/X11TrayHosts.h"

#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/server/XcbReply.h"

#include <xcb/xfixes.h>

#include <memory>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

X11TrayHosts::X11TrayHosts(X11Connection& connection) : connection(connection) {
    if (!connection.extensions().xfixesFirstEvent)
        return;
    xcb_xfixes_select_selection_input(connection.xcb(), connection.ownWindow(), connection.atoms().systemTray,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    connection.flush();
}

bool X11TrayHosts::present() {
    auto* xcb = connection.xcb();
    const XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        xcb, xcb_get_selection_owner(xcb, connection.atoms().systemTray), nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

AnyCancellable X11TrayHosts::subscribe(std::function<void(bool)> changed) {
    const auto firstEvent = connection.extensions().xfixesFirstEvent;
    if (!firstEvent)
        return {};
    const auto notify = static_cast<std::uint8_t>(firstEvent + XCB_XFIXES_SELECTION_NOTIFY);
    const auto tray = connection.atoms().systemTray;
    auto subscription = std::make_shared<X11Connection::Subscription>(
        connection.subscribe(notify, [tray, changed = std::move(changed)](const xcb_generic_event_t& event) {
            const auto& selection = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
            if (selection.selection == tray)
                changed(selection.owner != XCB_WINDOW_NONE);
        }));
    return AnyCancellable([subscription]() mutable { subscription.reset(); });
}

} // namespace mirrolet::platform::desktop::x11
