#include "platform/desktop/WaylandModule.h"
#include "platform/desktop/wayland/ext/CaptureProtocols.h"
#include "platform/desktop/wayland/ext/ExtDesktop.h"
#include "platform/desktop/wayland/plasma/PlasmaDesktop.h"
#include "platform/desktop/wayland/plasma/PlasmaPermission.h"
#include "platform/desktop/wayland/session/CombinedDesktop.h"
#include "platform/desktop/wayland/session/UnpermittedDesktop.h"
#include "platform/desktop/wayland/session/WaylandConnection.h"

#include <chrono>
#include <string>
#include <thread>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

namespace {

constexpr std::chrono::seconds longestRead{3};
constexpr std::chrono::milliseconds pause{100};
constexpr auto notInstalled =
    "KWin lets only an installed Mirrolet see windows, and no desktop entry names this "
    "program: install its package, or run cmake --install";
constexpr auto refused =
    "KWin does not let this program see windows, although its desktop entry asks for it: log "
    "in again";

/// Returns a connection to which KWin offers its windows, if possible within a few seconds. KWin decides once
/// for each connection, and may not have read this program's desktop entry by then. So Plasma is made to read
/// the entries again, and new connections are opened until KWin knows the entry.
std::unique_ptr<WaylandConnection> withPermission(std::unique_ptr<WaylandConnection> connection) {
    if (offersPlasmaWindows(*connection) || !isKWin(*connection) || !entryAsksForWindows())
        return connection;
    refreshDesktopEntries();
    const auto deadline = std::chrono::steady_clock::now() + longestRead;
    while (!offersPlasmaWindows(*connection) && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(pause);
        std::string problem;
        if (auto again = WaylandConnection::open(problem))
            connection = std::move(again);
    }
    return connection;
}

WaylandParts makeParts(std::unique_ptr<Desktop> shown) {
    std::string problem;
    auto connection = WaylandConnection::open(problem);
    if (!connection)
        return {std::move(shown),
                "only windows of X11 applications can be seen and mirrored, because this program " + problem};
    connection = withPermission(std::move(connection));
    if (offersPlasmaWindows(*connection))
        return {makePlasmaDesktop(std::move(shown), std::move(connection)),
                "found a Plasma session on Wayland; sees windows through KWin, shows through XWayland"};
    if (isKWin(*connection))
        return {std::make_unique<UnpermittedDesktop>(std::move(shown), std::move(connection)),
                entryAsksForWindows() ? refused : notInstalled};
    if (offersToplevelCapture(*connection)) {
        WaylandParts parts;
        parts.desktop = makeExtDesktop(std::move(shown), std::move(connection), parts.report);
        return parts;
    }
    return {std::make_unique<CombinedDesktop>(std::move(shown)),
            "in this Wayland session, only windows of X11 applications can be seen and mirrored; native "
            "Wayland windows cannot"};
}

} // namespace

} // namespace mirrolet::platform::desktop::wayland

/// The only function that the module exports. loadWaylandModule() looks for this name and type.
extern "C" void mirroletWaylandParts(std::unique_ptr<mirrolet::platform::desktop::Desktop> shown,
                                     mirrolet::platform::desktop::WaylandParts& parts) {
    parts = mirrolet::platform::desktop::wayland::makeParts(std::move(shown));
}
