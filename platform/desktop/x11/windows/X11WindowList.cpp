#include "platform/desktop/x11/windows/X11WindowList.h"

#include "platform/desktop/x11/server/Property.h"
#include "platform/desktop/x11/windows/OwnerRequest.h"
#include "platform/desktop/x11/windows/WindowDescription.h"
#include "platform/desktop/x11/windows/WindowManagerCheck.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_set>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

// A title can be megabytes long; nobody reads more of it than this.
constexpr std::uint32_t mostBytesOfTitle = 4096;
constexpr std::uint32_t mostBytesOfList = 512;
// A number of windows beyond any desktop in use. Those behind the foremost ones are left out, so that a
// client that makes windows without end does not make each poll dearer without end.
constexpr std::uint32_t mostBytesOfStack = 1 << 20;
constexpr std::size_t mostListed = 16384;
// Asked about in one round trip: their titles may be as long as is read, and all wait in memory meanwhile.
constexpr std::size_t mostAtOnce = 512;

enum class Source { manager, root };

/// Without a window manager the root's children that bypass it are menus, tooltips and the like.
bool counts(const xcb_get_window_attributes_reply_t& attributes, Source source) {
    return attributes.map_state == XCB_MAP_STATE_VIEWABLE &&
           attributes._class != XCB_WINDOW_CLASS_INPUT_ONLY &&
           (source == Source::manager || attributes.override_redirect == 0);
}

/// What was asked of one window.
class WindowRequest {
  public:
    /// With a filter, the window's attributes are asked for too and decide whether it counts.
    WindowRequest(X11Connection& connection, xcb_window_t window, bool askForPid,
                  std::optional<Source> filter)
        : connection(connection), filter(filter),
          attributes(filter ? xcb_get_window_attributes(connection.xcb(), window)
                            : xcb_get_window_attributes_cookie_t{}),
          geometry(xcb_get_geometry(connection.xcb(), window)),
          position(xcb_translate_coordinates(connection.xcb(), window, connection.root(), 0, 0)),
          netName(ask(window, connection.atoms()._NET_WM_NAME, mostBytesOfTitle)),
          name(ask(window, XCB_ATOM_WM_NAME, mostBytesOfTitle)),
          state(ask(window, connection.atoms()._NET_WM_STATE, mostBytesOfList)),
          types(ask(window, connection.atoms()._NET_WM_WINDOW_TYPE, mostBytesOfList)),
          frameExtents(ask(window, connection.atoms()._GTK_FRAME_EXTENTS, mostBytesOfList)),
          owner(connection, window, askForPid) {}

    struct Answer {
        WindowDescription description;
        WindowOwner owner;
    };

    /// Waits for the replies, for every one of them, even where the first says that the window is gone.
    std::optional<Answer> take(const ClientProcesses& clients) {
        const bool wanted = takeFilter();
        const auto size = connection.reply<xcb_get_geometry_reply>(geometry, windowGone);
        const auto origin = connection.reply<xcb_translate_coordinates_reply>(position, windowGone);
        auto description = takeDescription(size.get(), origin.get());
        auto whose = owner.take(clients);
        if (!wanted || !description)
            return std::nullopt;
        return Answer{std::move(*description), std::move(whose)};
    }

  private:
    xcb_get_property_cookie_t ask(xcb_window_t window, xcb_atom_t property, std::uint32_t mostBytes) {
        return requestProperty(connection, window, property, mostBytes);
    }

    bool takeFilter() {
        if (!filter)
            return true;
        const auto reply = connection.reply<xcb_get_window_attributes_reply>(attributes, windowGone);
        return reply && counts(*reply, *filter);
    }

    std::optional<WindowDescription> takeDescription(const xcb_get_geometry_reply_t* size,
                                                     const xcb_translate_coordinates_reply_t* origin) {
        const auto netNameReply = takeProperty(connection, netName);
        const auto nameReply = takeProperty(connection, name);
        const auto stateReply = takeProperty(connection, state);
        const auto typesReply = takeProperty(connection, types);
        const auto extentsReply = takeProperty(connection, frameExtents);
        if (!size || !origin)
            return std::nullopt;
        const PixelRect bounds{origin->dst_x, origin->dst_y, size->width, size->height};
        return describe(bounds, {netNameReply, nameReply, stateReply, typesReply, extentsReply},
                        connection.atoms());
    }

    X11Connection& connection;
    std::optional<Source> filter;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t position;
    xcb_get_property_cookie_t netName, name, state, types, frameExtents;
    OwnerRequest owner;
};

} // namespace

/// One reading of the list.
class X11WindowList::Reading {
  public:
    explicit Reading(X11Connection& connection)
        : connection(connection), xcb(connection.xcb()), clients(connection), check(connection) {}

    /// Front to back. False if the server did not answer.
    bool run() {
        if (!readRoot())
            return false;
        const auto foremost =
            managed ? foremostOf(*managed, Source::manager) : foremostOf(children, Source::root);
        const bool managerLives = managerNamed && check.managerLives();
        // The list that a window manager left behind says nothing any more.
        if (managed && !managerLives)
            readWindows(children, Source::root);
        else
            readWindows(foremost, std::nullopt);
        return xcb_connection_has_error(xcb) == 0;
    }

    std::vector<WindowDescription> descriptions;
    std::vector<WindowOwner> owners; ///< One for each description.

  private:
    /// The first round trip.
    bool readRoot() {
        const auto& atoms = connection.atoms();
        const auto list = askRoot(atoms._NET_CLIENT_LIST_STACKING);
        const auto unordered = askRoot(atoms._NET_CLIENT_LIST);
        const auto active = askRoot(atoms._NET_ACTIVE_WINDOW);
        const auto tree = xcb_query_tree(xcb, connection.root());
        const auto pids = clients.request();
        managerNamed = check.askManager();
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

    /// The stack may lack a window that is on screen: xfwm4 publishes a new window's place only when it is
    /// next raised, and i3 does not list one that opens in full screen above nothing. The plain list or the
    /// active window then names it; as the newest, it is put in front. An empty list is a desktop without
    /// windows; only an absent one is no list.
    static std::optional<std::vector<xcb_window_t>> listed(const Property& stack, const Property& unordered,
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

    static std::vector<xcb_window_t> frontToBack(const std::vector<xcb_window_t>& stack) {
        std::unordered_set<xcb_window_t> seen = {XCB_WINDOW_NONE};
        std::vector<xcb_window_t> windows;
        for (auto window = stack.rbegin(); window != stack.rend() && windows.size() < mostListed; ++window) {
            if (seen.insert(*window).second)
                windows.push_back(*window);
        }
        return windows;
    }

    /// The second round trip: those that are on screen at all, before much is asked of them.
    std::vector<xcb_window_t> foremostOf(const std::vector<xcb_window_t>& windows, Source source) {
        std::vector<xcb_get_window_attributes_cookie_t> cookies;
        cookies.reserve(windows.size());
        for (const auto window : windows)
            cookies.push_back(xcb_get_window_attributes(xcb, window));
        std::vector<xcb_window_t> viewable;
        for (std::size_t i = 0; i < windows.size(); ++i) {
            const auto reply = connection.reply<xcb_get_window_attributes_reply>(cookies[i], windowGone);
            if (reply && counts(*reply, source))
                viewable.push_back(windows[i]);
        }
        return viewable;
    }

    /// The third round trip; a desktop in use needs no further one.
    void readWindows(std::span<const xcb_window_t> windows, std::optional<Source> filter) {
        for (; !windows.empty(); windows = windows.subspan(std::min(windows.size(), mostAtOnce)))
            readBatch(windows.first(std::min(windows.size(), mostAtOnce)), filter);
    }

    void readBatch(std::span<const xcb_window_t> windows, std::optional<Source> filter) {
        std::vector<WindowRequest> requests;
        requests.reserve(windows.size());
        for (const auto window : windows) {
            const bool askForPid = clients.pidOf(clients.clientOf(window)) == 0;
            requests.emplace_back(connection, window, askForPid, filter);
        }
        for (auto& request : requests) {
            if (auto answer = request.take(clients)) {
                descriptions.push_back(std::move(answer->description));
                owners.push_back(std::move(answer->owner));
            }
        }
    }

    X11Connection& connection;
    xcb_connection_t* xcb;
    ClientProcesses clients;
    WindowManagerCheck check;
    bool managerNamed = false;
    std::optional<std::vector<xcb_window_t>> managed; ///< None without a window manager's list.
    std::vector<xcb_window_t> children;
};

std::optional<std::vector<WindowRow>> X11WindowList::onScreenWindows() {
    Reading reading(connection);
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
