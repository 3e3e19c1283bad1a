#include "platform/desktop/x11/server/CompositingManager.h"

#include "platform/desktop/x11/server/XcbReply.h"

#include <xcb/xfixes.h>

#include <utility>

namespace mirrolet::platform::desktop::x11 {

CompositingManager::CompositingManager(X11Connection& connection) : connection(connection) {
    subscription = subscribe([this](xcb_window_t owner) { isRunning = owner != XCB_WINDOW_NONE; });
    if (connection.extensions().xfixesFirstEvent)
        xcb_xfixes_select_selection_input(connection.xcb(), connection.ownWindow(),
                                          connection.atoms().compositingManager,
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const XcbReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        connection.xcb(), xcb_get_selection_owner(connection.xcb(), connection.atoms().compositingManager),
        nullptr));
    isRunning = owner && owner->owner != XCB_WINDOW_NONE;
}

X11Connection::Subscription CompositingManager::onChange(std::function<void()> changed) {
    return subscribe([changed = std::move(changed)](xcb_window_t) { changed(); });
}

X11Connection::Subscription CompositingManager::subscribe(std::function<void(xcb_window_t)> changed) {
    if (!connection.extensions().xfixesFirstEvent)
        return {};
    const auto eventType =
        static_cast<std::uint8_t>(connection.extensions().xfixesFirstEvent + XCB_XFIXES_SELECTION_NOTIFY);
    return connection.subscribe(
        eventType, [this, changed = std::move(changed)](const xcb_generic_event_t& event) {
            const auto& notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
            if (notify.selection == connection.atoms().compositingManager)
                changed(notify.owner);
        });
}

} // namespace mirrolet::platform::desktop::x11
