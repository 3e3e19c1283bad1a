#include "platform/desktop/wayland/plasma/PlasmaDesktop.h"

#include "platform/desktop/wayland/keyboard/SeatKeyboard.h"
#include "platform/desktop/wayland/plasma/PlasmaApplications.h"
#include "platform/desktop/wayland/plasma/PlasmaCapture.h"
#include "platform/desktop/wayland/plasma/PlasmaHotKeys.h"
#include "platform/desktop/wayland/plasma/PlasmaWindowList.h"
#include "platform/desktop/wayland/plasma/PlasmaWindows.h"
#include "platform/desktop/wayland/plasma/VirtualDesktops.h"
#include "platform/desktop/wayland/session/CombinedDesktop.h"
#include "platform/foundation/NSLog.h"

#include <plasma-virtual-desktop-client-protocol.h>
#include <plasma-window-management-client-protocol.h>
#include <utility>
#include <zkde-screencast-unstable-v1-client-protocol.h>

namespace mirrolet::platform::desktop::wayland {

namespace {

class PlasmaDesktop final : public CombinedDesktop {
  public:
    PlasmaDesktop(std::unique_ptr<Desktop> shownBy, std::unique_ptr<WaylandConnection> opened)
        : CombinedDesktop(std::move(shownBy)), connection(std::move(opened)), windows(*connection),
          desktops(*connection), theApplications(windows.model(), shown->windowList()),
          theCapture(*connection, windows.model(), *shown),
          theWindowList(windows.model(), desktops, theApplications,
                        [this](WindowNumber window) { return theCapture.isCaptured(window); }),
          keyboard(*connection),
          theHotKeys(keyboard, [this](std::uint32_t code) { return shown->hotKeys().isDown(code); }) {
        // The first replies name the windows, virtual desktops and keyboards. The second replies describe
        // them.
        connection->waitForReplies();
        connection->waitForReplies();
        // Logging is enough, because the connection to XWayland is lost at the same moment, and that ends the
        // program.
        connection->start([] { NSLog("Mirrolet: the connection to the Wayland compositor was lost"); });
    }
    ~PlasmaDesktop() override { connection->end(); }
    PlasmaDesktop(const PlasmaDesktop&) = delete;
    PlasmaDesktop& operator=(const PlasmaDesktop&) = delete;

    WindowList& windowList() override { return theWindowList; }
    Applications& applications() override { return theApplications; }
    WindowCapture& capture() override { return theCapture; }
    HotKeys& hotKeys() override { return theHotKeys; }

  private:
    // Members are destroyed from the bottom up, so the connection is destroyed after all of its objects.
    std::unique_ptr<WaylandConnection> connection;
    PlasmaWindows windows;
    VirtualDesktops desktops;
    PlasmaApplications theApplications;
    PlasmaCapture theCapture;
    PlasmaWindowList theWindowList;
    SeatKeyboard keyboard;
    PlasmaHotKeys theHotKeys;
};

} // namespace

bool offersPlasmaWindows(const WaylandConnection& connection) {
    return connection.offers(org_kde_plasma_window_management_interface) &&
           connection.offers(zkde_screencast_unstable_v1_interface);
}

bool isKWin(const WaylandConnection& connection) {
    return connection.offers(org_kde_plasma_virtual_desktop_management_interface);
}

std::unique_ptr<Desktop> makePlasmaDesktop(std::unique_ptr<Desktop> shown,
                                           std::unique_ptr<WaylandConnection> connection) {
    return std::make_unique<PlasmaDesktop>(std::move(shown), std::move(connection));
}

} // namespace mirrolet::platform::desktop::wayland
