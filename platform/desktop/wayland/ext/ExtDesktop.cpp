#include "platform/desktop/wayland/ext/ExtDesktop.h"

#include "platform/desktop/wayland/ext/CaptureProtocols.h"
#include "platform/desktop/wayland/ext/SizeMeasurements.h"
#include "platform/desktop/wayland/ext/ToplevelApplications.h"
#include "platform/desktop/wayland/ext/ToplevelCapture.h"
#include "platform/desktop/wayland/ext/ToplevelSizes.h"
#include "platform/desktop/wayland/ext/ToplevelStreams.h"
#include "platform/desktop/wayland/ext/ToplevelWindowList.h"
#include "platform/desktop/wayland/ext/Toplevels.h"
#include "platform/desktop/wayland/session/CombinedDesktop.h"
#include "platform/foundation/NSLog.h"

#include <utility>
#include <wlr-foreign-toplevel-management-unstable-v1-client-protocol.h>

namespace mirrolet::platform::desktop::wayland {

namespace {

class ExtDesktop final : public CombinedDesktop {
  public:
    ExtDesktop(std::unique_ptr<Desktop> shownBy, std::unique_ptr<WaylandConnection> opened)
        : CombinedDesktop(std::move(shownBy)), connection(std::move(opened)), windows(*connection),
          protocols(*connection), measurements(*connection, windows, protocols, sizes),
          streams(*connection, windows, protocols, sizes), theApplications(windows.model()),
          theCapture(streams, windows.model(), *shown),
          theWindowList(windows.model(), sizes, measurements, theApplications,
                        [this](WindowNumber window) { return theCapture.isCaptured(window); }) {
        windows.setAppeared([this] { theWindowList.measure(); });
        // The first replies name the windows. The second replies describe them.
        connection->waitForReplies();
        connection->waitForReplies();
        // Logging is enough, because the connection to XWayland is lost at the same moment, and that ends the
        // program.
        connection->start([] { NSLog("Mirrolet: the connection to the Wayland compositor was lost"); });
    }
    ~ExtDesktop() override { connection->end(); }
    ExtDesktop(const ExtDesktop&) = delete;
    ExtDesktop& operator=(const ExtDesktop&) = delete;

    WindowList& windowList() override { return theWindowList; }
    Applications& applications() override { return theApplications; }
    WindowCapture& capture() override { return theCapture; }

  private:
    // Members are destroyed from the bottom up, so the connection is destroyed after all of its objects.
    std::unique_ptr<WaylandConnection> connection;
    Toplevels windows;
    CaptureProtocols protocols;
    ToplevelSizes sizes;
    SizeMeasurements measurements;
    ToplevelStreams streams;
    ToplevelApplications theApplications;
    ToplevelCapture theCapture;
    ToplevelWindowList theWindowList;
};

} // namespace

std::unique_ptr<Desktop> makeExtDesktop(std::unique_ptr<Desktop> shown,
                                        std::unique_ptr<WaylandConnection> connection, std::string& report) {
    report = "found a Wayland session with the standard protocols; sees windows through them, shows through "
             "XWayland, hears shortcuts only while an X11 window has the focus";
    if (!connection->offers(zwlr_foreign_toplevel_manager_v1_interface))
        report += "; the compositor does not tell which window is in front or minimized";
    return std::make_unique<ExtDesktop>(std::move(shown), std::move(connection));
}

} // namespace mirrolet::platform::desktop::wayland
