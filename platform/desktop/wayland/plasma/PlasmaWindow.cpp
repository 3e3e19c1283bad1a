#include "platform/desktop/wayland/plasma/PlasmaWindow.h"

#include <plasma-window-management-client-protocol.h>

namespace mirrolet::platform::desktop::wayland {

namespace {
bool has(const PlasmaWindow& window, std::uint32_t flag) {
    return (window.state & flag) != 0;
}
} // namespace

bool isPartOfTheDesktop(const PlasmaWindow& window) {
    // The protocol does not report a window's type. But only docks and desktop backgrounds are left out of
    // task bars and cannot be closed.
    return skipsTaskBar(window) && !has(window, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_CLOSEABLE);
}

bool isActive(const PlasmaWindow& window) {
    return has(window, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE);
}

bool isMinimized(const PlasmaWindow& window) {
    return has(window, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MINIMIZED);
}

bool skipsTaskBar(const PlasmaWindow& window) {
    return has(window, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_SKIPTASKBAR);
}

int layerOf(const PlasmaWindow& window) {
    if (has(window, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_KEEP_ABOVE))
        return 1;
    return has(window, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_KEEP_BELOW) ? -1 : 0;
}

bool isOnDesktop(const PlasmaWindow& window, const std::string& desktop) {
    return window.desktops.empty() || window.desktops.contains(desktop) ||
           has(window, ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ON_ALL_DESKTOPS);
}

} // namespace mirrolet::platform::desktop::wayland
