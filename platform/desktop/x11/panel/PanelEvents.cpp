#include "platform/desktop/x11/panel/PanelEvents.h"

#include "platform/desktop/x11/server/ExpectErrors.h"

namespace mirrolet::platform::desktop::x11 {

PanelEvents::PanelEvents(X11Connection& connection, xcb_window_t panel)
    : connection(connection), panel(panel) {
    select(XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_FOCUS_CHANGE | XCB_EVENT_MASK_VISIBILITY_CHANGE |
           XCB_EVENT_MASK_PROPERTY_CHANGE);
}

PanelEvents::~PanelEvents() {
    select(XCB_EVENT_MASK_NO_EVENT);
}

void PanelEvents::select(std::uint32_t mask) const {
    const ExpectErrors gone(connection, windowGone); // Qt may have destroyed its window.
    xcb_change_window_attributes(connection.xcb(), panel, XCB_CW_EVENT_MASK, &mask);
    connection.flush();
}

} // namespace mirrolet::platform::desktop::x11
