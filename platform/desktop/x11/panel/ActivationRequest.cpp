#include "platform/desktop/x11/panel/ActivationRequest.h"

#include "platform/desktop/x11/panel/ManagerMessage.h"

namespace mirrolet::platform::desktop::x11 {

void requestActivation(const X11Connection& connection, xcb_window_t window) {
    sendToManager(connection, window, connection.atoms()._NET_ACTIVE_WINDOW,
                  {MessageSource::pager, XCB_CURRENT_TIME, XCB_WINDOW_NONE});
    connection.flush();
}

} // namespace mirrolet::platform::desktop::x11
