#include "platform/desktop/wayland/ext/Toplevel.h"

#include <wlr-foreign-toplevel-management-unstable-v1-client-protocol.h>

namespace mirrolet::platform::desktop::wayland {

bool isActive(const Toplevel& window) {
    return (window.states >> ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED & 1U) != 0;
}

bool isMinimized(const Toplevel& window) {
    return (window.states >> ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MINIMIZED & 1U) != 0;
}

} // namespace mirrolet::platform::desktop::wayland
