#include "platform/desktop/x11/panel/RaiseRequest.h"

#include "platform/desktop/x11/panel/ManagerMessage.h"
#include "platform/desktop/x11/server/ExpectErrors.h"
#include "platform/desktop/x11/server/Property.h"

#include <algorithm>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr std::uint32_t mostSupportedBytes = 8192;

} // namespace

RaiseRequest::RaiseRequest(X11Connection& connection, xcb_window_t panel)
    : connection(connection), panel(panel) {
    subscription =
        connection.subscribe<xcb_property_notify_event_t>(connection.ownWindow(), [this](const auto& event) {
            if (event.atom == this->connection.atoms()._MIRROLET_TIME)
                timeKnown(event.time);
        });
}

void RaiseRequest::send() {
    pending = true;
    // The server's time is known only from events. An empty change of a property of our own window makes the
    // server send such an event.
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_APPEND, connection.ownWindow(),
                        connection.atoms()._MIRROLET_TIME, XCB_ATOM_INTEGER, 32, 0, nullptr);
    connection.flush();
}

void RaiseRequest::timeKnown(xcb_timestamp_t time) {
    if (!pending.exchange(false))
        return;
    if (managerTakesRestackMessages())
        sendRestackMessage();
    else
        raiseAsJustUsed(time);
    connection.flush();
}

bool RaiseRequest::managerTakesRestackMessages() const {
    const auto& atoms = connection.atoms();
    const auto cookie =
        requestProperty(connection, connection.root(), atoms._NET_SUPPORTED, mostSupportedBytes);
    const auto supported = takeProperty(connection, cookie).items(XCB_ATOM_ATOM);
    return std::ranges::find(supported, atoms._NET_RESTACK_WINDOW) != supported.end();
}

void RaiseRequest::sendRestackMessage() const {
    // XCB_WINDOW_NONE: the panel comes in front of all windows, not of a certain one.
    sendToManager(connection, panel, connection.atoms()._NET_RESTACK_WINDOW,
                  {MessageSource::pager, XCB_WINDOW_NONE, XCB_STACK_MODE_ABOVE});
}

/// Sets the time of the panel's last use to `time`, so that the window manager accepts the raise. Then raises
/// the panel. The time of last use can be a property of a separate window, because Qt makes such a window if
/// the window manager supports that.
void RaiseRequest::raiseAsJustUsed(xcb_timestamp_t time) const {
    const auto& atoms = connection.atoms();
    const auto cookie = requestProperty(connection, panel, atoms._NET_WM_USER_TIME_WINDOW, 4);
    const auto timeWindow = takeProperty(connection, cookie).items(XCB_ATOM_WINDOW);
    const ExpectErrors gone(connection, windowGone); // Qt may have destroyed its windows.
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE,
                        timeWindow.empty() ? panel : timeWindow.front(), atoms._NET_WM_USER_TIME,
                        XCB_ATOM_CARDINAL, 32, 1, &time);
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(connection.xcb(), panel, XCB_CONFIG_WINDOW_STACK_MODE, &above);
}

} // namespace mirrolet::platform::desktop::x11
