#include "platform/desktop/x11/panel/ManagerMessage.h"

#include <algorithm>
#include <iterator>

namespace mirrolet::platform::desktop::x11 {

void sendToManager(const X11Connection& connection, xcb_window_t window, xcb_atom_t type,
                   const std::array<std::uint32_t, 5>& data) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::copy(data.begin(), data.end(), std::begin(message.data.data32));
    xcb_send_event(connection.xcb(), 0, connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
}

} // namespace mirrolet::platform::desktop::x11
