#include "platform/desktop/x11/windows/X11WindowList.h"

#include "platform/desktop/x11/server/Property.h"
#include "platform/desktop/x11/windows/WindowManagerCheck.h"
#include "platform/desktop/x11/windows/WindowPlacement.h"
#include "platform/desktop/x11/windows/WindowRequest.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>
#include <thread>
#include <unordered_set>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

// The limits on the windows that are read. No real desktop has more windows. A hostile client could create
// windows without end, which would make each reading slower. Beyond the limits the rearmost windows are left
// out.
constexpr std::uint32_t mostBytesOfStack = 1 << 20;
constexpr std::size_t mostListed = 16384;
// How many windows are asked about in one round trip. The number is limited because all replies of a round
// trip are in memory at once.
constexpr std::size_t mostAtOnce = 512;
constexpr std::uint32_t mostBytesOfManagerName = 256;

// A window manager changes the workspace in several steps. Between two steps a window can be unmapped while
// its workspace is the current one. The steps were measured to take up to 2 ms. After this longer time, such
// a window is read again.
constexpr std::chrono::milliseconds timeToChangeWorkspace{50};

enum class Source { manager, root };

/// Returns whether the window list may contain the window. Override-redirect children of the root window are
/// left out, because they are menus, tooltips and the like.
bool isListable(const xcb_get_window_attributes_reply_t& attributes, Source source) {
    return attributes._class != XCB_WINDOW_CLASS_INPUT_ONLY &&
           (source == Source::manager || attributes.override_redirect == 0);
}

/// Returns the windows of a back-to-front stack in front-to-back order. A window that the stack names twice
/// is kept once.
std::vector<xcb_window_t> frontToBack(const std::vector<xcb_window_t>& stack) {
    std::unordered_set<xcb_window_t> seen = {XCB_WINDOW_NONE};
    std::vector<xcb_window_t> windows;
    for (auto window = stack.rbegin(); window != stack.rend() && windows.size() < mostListed; ++window) {
        if (seen.insert(*window).second)
            windows.push_back(*window);
    }
    return windows;
}

/// Returns the windows that the window manager lists, front to back. Returns none if the window manager has
/// no list. An empty list means a desktop without windows.
///
/// `stack` can lack a window that is on screen. For example, xfwm4 adds a new window only when that window is
/// next raised, and i3 leaves out a window that opens in full screen on an empty workspace. The missing
/// window is then taken from `unordered` or `active`, and is put in front because it is the newest.
std::optional<std::vector<xcb_window_t>> listed(const Property& stack, const Property& unordered,
                                                const Property& active) {
    const auto isList = [](const Property& list) {
        return list.type == XCB_ATOM_WINDOW && list.format == 32;
    };
    if (!isList(stack) && !isList(unordered))
        return std::nullopt;
    auto windows = stack.items(XCB_ATOM_WINDOW);
    std::unordered_set<xcb_window_t> known(windows.begin(), windows.end());
    for (const auto* more : {&unordered, &active}) {
        for (const auto window : more->items(XCB_ATOM_WINDOW)) {
            if (known.insert(window).second)
                windows.push_back(window);
        }
    }
    return frontToBack(windows);
}

} // namespace

/// Reads the list once and holds the results.
class X11WindowList::Reading {
  public:
    Reading(X11Connection& connection, const IsMirrored& isMirrored)
        : connection(connection), xcb(connection.xcb()), isMirrored(isMirrored), clients(connection),
          check(connection) {}

    /// Reads the windows, front to back. Returns false if the server did not answer.
    bool run() {
        if (!readRoot())
            return false;
        if (!managed || !readManaged())
            readWindows(shownAmong(children, Source::root), Source::root);
        return xcb_connection_has_error(xcb) == 0;
    }

    std::vector<WindowDescription> descriptions;
    std::vector<WindowOwner> owners; ///< One owner for each description.

  private:
    /// Makes the first round trip, which asks about the root window and the client processes.
    bool readRoot() {
        const auto& atoms = connection.atoms();
        const auto list = askRoot(atoms._NET_CLIENT_LIST_STACKING);
        const auto unordered = askRoot(atoms._NET_CLIENT_LIST);
        const auto active = askRoot(atoms._NET_ACTIVE_WINDOW);
        const auto tree = xcb_query_tree(xcb, connection.root());
        const auto pids = clients.request();
        const bool managerNamed = check.askManager();
        const auto listReply = takeProperty(connection, list);
        const auto unorderedReply = takeProperty(connection, unordered);
        const auto activeReply = takeProperty(connection, active);
        const auto treeReply = connection.reply<xcb_query_tree_reply>(tree);
        clients.take(pids);
        if (!treeReply)
            return false;
        const auto* child = xcb_query_tree_children(treeReply.get());
        children = frontToBack({child, child + xcb_query_tree_children_length(treeReply.get())});
        if (managerNamed)
            managed = listed(listReply, unorderedReply, activeReply);
        return true;
    }

    xcb_get_property_cookie_t askRoot(xcb_atom_t property) {
        return requestProperty(connection, connection.root(), property, mostBytesOfStack);
    }

    /// Reads the windows that the window manager lists. Returns false if the window manager has ended,
    /// because its list is out of date then.
    bool readManaged() {
        const auto name = requestProperty(connection, check.window(), connection.atoms()._NET_WM_NAME,
                                          mostBytesOfManagerName);
        auto shown = shownAmong(*managed, Source::manager);
        const auto nameReply = takeProperty(connection, name);
        if (!check.managerLives())
            return false;
        if (missesMirrored) {
            std::this_thread::sleep_for(timeToChangeWorkspace);
            shown = shownAmong(*managed, Source::manager);
        }
        // KWin keeps windows of other workspaces mapped, for its previews. Only the window manager's name
        // reveals this.
        workspaces.othersLookShown = nameReply.bytes == "KWin";
        readWindows(shown, Source::manager);
        return true;
    }

    /// The requests that ask whether a window can be on screen.
    struct Glance {
        xcb_window_t window;
        xcb_get_window_attributes_cookie_t attributes;
        std::optional<xcb_get_property_cookie_t> workspace; ///< Asked for mirrored windows only.
    };

    /// Makes the second round trip and returns the windows that can be on screen.
    std::vector<xcb_window_t> shownAmong(const std::vector<xcb_window_t>& windows, Source source) {
        const auto& atoms = connection.atoms();
        std::vector<Glance> glances;
        glances.reserve(windows.size());
        for (const auto window : windows) {
            glances.push_back({window, xcb_get_window_attributes(xcb, window), {}});
            if (source == Source::manager && isMirrored(window))
                glances.back().workspace = askNumber(window, atoms._NET_WM_DESKTOP);
        }
        const auto current = askNumber(connection.root(), atoms._NET_CURRENT_DESKTOP);
        workspaces.current = takeNumber(current);
        mirrored.clear();
        missesMirrored = false;
        std::vector<xcb_window_t> shown;
        for (const auto& glance : glances) {
            if (takeGlance(glance, source))
                shown.push_back(glance.window);
        }
        return shown;
    }

    bool takeGlance(const Glance& glance, Source source) {
        const auto attributes =
            connection.reply<xcb_get_window_attributes_reply>(glance.attributes, windowGone);
        WindowPlacement placement;
        if (glance.workspace)
            placement.workspace = takeNumber(*glance.workspace);
        if (!attributes || !isListable(*attributes, source))
            return false;
        placement.viewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
        if (!glance.workspace)
            return placement.viewable;
        const bool onScreen = isOnScreen(placement, workspaces, true);
        if (onScreen)
            mirrored.insert(glance.window);
        else
            missesMirrored = true;
        return onScreen;
    }

    xcb_get_property_cookie_t askNumber(xcb_window_t window, xcb_atom_t property) {
        return requestProperty(connection, window, property, sizeof(std::uint32_t));
    }

    std::optional<std::uint32_t> takeNumber(xcb_get_property_cookie_t cookie) {
        return firstCardinal(takeProperty(connection, cookie));
    }

    /// Makes the third round trip. Makes further round trips if there are more than `mostAtOnce` windows.
    void readWindows(std::span<const xcb_window_t> windows, Source source) {
        for (; !windows.empty(); windows = windows.subspan(std::min(windows.size(), mostAtOnce)))
            readBatch(windows.first(std::min(windows.size(), mostAtOnce)), source);
    }

    void readBatch(std::span<const xcb_window_t> windows, Source source) {
        std::vector<WindowRequest> requests;
        requests.reserve(windows.size());
        for (const auto window : windows) {
            const bool managed = source == Source::manager;
            requests.emplace_back(
                connection, window,
                WindowRequest::Options{.wmState = managed,
                                       .workspace = managed && workspaces.othersLookShown,
                                       .claimedPid = clients.pidOf(clients.clientOf(window)) == 0});
        }
        for (auto& request : requests)
            add(request.take(clients));
    }

    void add(std::optional<WindowRequest::Answer> answer) {
        if (!answer)
            return;
        auto& placement = answer->description.placement;
        placement.viewable = true;
        if (!mirrored.contains(answer->owner.window) && !isOnScreen(placement, workspaces, false))
            return;
        descriptions.push_back(std::move(answer->description));
        owners.push_back(std::move(answer->owner));
    }

    X11Connection& connection;
    xcb_connection_t* xcb;
    const IsMirrored& isMirrored;
    ClientProcesses clients;
    WindowManagerCheck check;
    std::optional<std::vector<xcb_window_t>> managed; ///< None if the window manager has no list.
    std::vector<xcb_window_t> children;
    Workspaces workspaces;
    std::unordered_set<xcb_window_t> mirrored; ///< The mirrored windows that count as on screen.
    bool missesMirrored = false;               ///< Whether a mirrored window does not count as on screen.
};

std::optional<std::vector<WindowRow>> X11WindowList::onScreenWindows() {
    Reading reading(connection, isMirrored);
    if (!reading.run())
        return std::nullopt;
    auto owners = applications.applicationsOf(reading.owners);
    std::vector<WindowRow> rows;
    rows.reserve(owners.size());
    for (std::size_t i = 0; i < owners.size(); ++i) {
        auto& description = reading.descriptions[i];
        rows.push_back({reading.owners[i].window, description.bounds, description.layer, owners[i].pid,
                        std::move(owners[i].name), std::move(description.title)});
    }
    return rows;
}

} // namespace mirrolet::platform::desktop::x11
