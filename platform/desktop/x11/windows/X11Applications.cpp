#include "platform/desktop/x11/windows/X11Applications.h"

#include "platform/desktop/x11/server/Property.h"
#include "platform/desktop/x11/windows/OwnerRequest.h"
#include "platform/desktop/x11/windows/WindowManagerCheck.h"
#include "platform/foundation/DesktopEntryFiles.h"

#include <unistd.h>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

X11Applications::X11Applications(X11Connection& connection, PreviousFocus& previousFocus)
    : X11Applications(connection, previousFocus, DesktopEntryIndex(userApplicationFolders())) {}

X11Applications::X11Applications(X11Connection& connection, PreviousFocus& previousFocus,
                                 DesktopEntryIndex entries)
    : connection(connection), previousFocus(previousFocus),
      registry(getpid(), ProcFolder(), std::move(entries)) {}

std::optional<Application> X11Applications::frontmost() {
    const xcb_window_t focusedBefore = previousFocus.window();
    const auto window = focusedBefore == XCB_WINDOW_NONE ? activeWindow() : std::optional(focusedBefore);
    if (!window)
        return std::nullopt;
    ClientProcesses clients(connection);
    const auto pids = clients.request();
    // The window's owner is asked for each time, because the window's number may belong to another client's
    // window by now.
    const auto exists = xcb_get_geometry(connection.xcb(), *window);
    OwnerRequest request(connection, *window, true);
    clients.take(pids);
    const auto geometry = connection.reply<xcb_get_geometry_reply>(exists, windowGone);
    const auto owner = request.take(clients);
    if (!geometry)
        return std::nullopt;
    return registry.applicationsOf({owner}, false).front();
}

std::optional<xcb_window_t> X11Applications::activeWindow() {
    WindowManagerCheck check(connection);
    const auto active =
        requestProperty(connection, connection.root(), connection.atoms()._NET_ACTIVE_WINDOW, 8);
    const auto focus = xcb_get_input_focus(connection.xcb());
    const bool named = check.askManager();
    const auto windows = takeProperty(connection, active).items(XCB_ATOM_WINDOW);
    const auto focusReply = connection.reply<xcb_get_input_focus_reply>(focus);
    if (named && check.managerLives() && !windows.empty())
        return windows[0] == XCB_WINDOW_NONE ? std::nullopt : std::optional(windows[0]);
    return focusReply ? focusedTopLevel(focusReply->focus) : std::nullopt;
}

/// Returns whether the window is not override-redirect. A window manager that has no window to focus gives
/// the focus to a hidden window of its own, which is override-redirect.
bool X11Applications::isOrdinary(xcb_window_t topLevel) const {
    const auto attributes = connection.reply<xcb_get_window_attributes_reply>(
        xcb_get_window_attributes(connection.xcb(), topLevel), windowGone);
    return attributes && attributes->override_redirect == 0;
}

/// Returns the top-level window that contains the focused window. The focus is often on a child window that
/// an application's toolkit made for that purpose.
std::optional<xcb_window_t> X11Applications::focusedTopLevel(xcb_window_t focus) const {
    constexpr int deepest = 64;
    if (focus == XCB_INPUT_FOCUS_POINTER_ROOT || focus == connection.root())
        return std::nullopt;
    for (int depth = 0; focus != XCB_WINDOW_NONE && depth < deepest; ++depth) {
        const auto tree =
            connection.reply<xcb_query_tree_reply>(xcb_query_tree(connection.xcb(), focus), windowGone);
        if (!tree)
            return std::nullopt;
        if (tree->parent == connection.root())
            return isOrdinary(focus) ? std::optional(focus) : std::nullopt;
        focus = tree->parent;
    }
    return std::nullopt;
}

} // namespace mirrolet::platform::desktop::x11
