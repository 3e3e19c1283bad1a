#include "platform/desktop/x11/server/SelectionWatcher.h"

#include <utility>

namespace mirrolet::platform::desktop::x11 {

SelectionWatcher::SelectionWatcher(X11Connection& connection, xcb_atom_t selection)
    : connection(connection), selection(selection) {
    auto* xcb = connection.xcb();
    subscription = onChange([this](bool owned) { isOwned = owned; });
    if (connection.extensions().xfixes)
        xcb_xfixes_select_selection_input(xcb, connection.ownWindow(), selection,
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    const auto owner =
        connection.reply<xcb_get_selection_owner_reply>(xcb_get_selection_owner(xcb, selection));
    isOwned = owner && owner->owner != XCB_WINDOW_NONE;
}

X11Connection::Subscription SelectionWatcher::onChange(std::function<void(bool)> changed) {
    return connection.subscribe<xcb_xfixes_selection_notify_event_t>(
        [selection = selection, changed = std::move(changed)](const auto& event) {
            if (event.selection == selection)
                changed(event.owner != XCB_WINDOW_NONE);
        });
}

} // namespace mirrolet::platform::desktop::x11
