#include "platform/desktop/x11/panel/StackingQuery.h"

#include "platform/desktop/x11/server/Property.h"

#include <algorithm>
#include <span>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr std::uint32_t mostBytesOfTypes = 32;

struct Candidate {
    xcb_window_t topLevel;
    bool overrideRedirect;
    std::vector<xcb_window_t> children;
    xcb_window_t client; ///< The window inside a frame. Without a frame, the top-level window itself.
};

std::vector<xcb_window_t> childrenFrom(const X11Connection& connection, xcb_query_tree_cookie_t cookie) {
    const auto reply = connection.reply<xcb_query_tree_reply>(cookie, windowGone);
    if (!reply)
        return {};
    const auto* first = xcb_query_tree_children(reply.get());
    return {first, first + xcb_query_tree_children_length(reply.get())};
}

/// Returns those top-level windows that are viewable. Sends all requests before it waits for the first reply,
/// so there is one round trip for any number of windows.
std::vector<Candidate> viewableOf(const X11Connection& connection,
                                  const std::vector<xcb_window_t>& topLevels) {
    std::vector<xcb_get_window_attributes_cookie_t> attributeCookies;
    std::vector<xcb_query_tree_cookie_t> treeCookies;
    for (const auto window : topLevels) {
        attributeCookies.push_back(xcb_get_window_attributes(connection.xcb(), window));
        treeCookies.push_back(xcb_query_tree(connection.xcb(), window));
    }
    std::vector<Candidate> found;
    for (std::size_t i = 0; i < topLevels.size(); ++i) {
        const auto attributes =
            connection.reply<xcb_get_window_attributes_reply>(attributeCookies[i], windowGone);
        auto children = childrenFrom(connection, treeCookies[i]);
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
            attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT)
            found.push_back(
                {topLevels[i], attributes->override_redirect != 0, std::move(children), topLevels[i]});
    }
    return found;
}

/// Finds the client's window inside a window manager's frame. A window's number tells which client made the
/// window. The client's window is therefore the window in the frame that the window manager did not make.
/// WM_STATE would tell this as well, but only some time after the map event.
class FrameReader {
  public:
    explicit FrameReader(const X11Connection& connection)
        : connection(connection), ownerMask(~xcb_get_setup(connection.xcb())->resource_id_mask) {}

    void findClients(std::vector<Candidate>& candidates) const {
        for (auto& candidate : candidates)
            findClient(candidate);
    }

  private:
    [[nodiscard]] xcb_window_t ownerOf(xcb_window_t window) const { return window & ownerMask; }

    void findClient(Candidate& candidate) const {
        const auto owner = ownerOf(candidate.topLevel);
        if (owner == 0)
            return; // This is the server's window for compositing managers.
        if (takeForeign(candidate, owner, candidate.children))
            return;
        std::vector<xcb_query_tree_cookie_t> cookies;
        for (const auto child : candidate.children)
            cookies.push_back(xcb_query_tree(connection.xcb(), child));
        for (const auto cookie : cookies)
            takeForeign(candidate, owner, childrenFrom(connection, cookie));
    }

    bool takeForeign(Candidate& candidate, xcb_window_t owner, std::span<const xcb_window_t> children) const {
        const auto foreign = std::ranges::find_if(
            children, [this, owner](xcb_window_t child) { return ownerOf(child) != owner; });
        if (foreign == children.end())
            return false;
        candidate.client = *foreign;
        return true;
    }

    const X11Connection& connection;
    std::uint32_t ownerMask;
};

bool isPopUp(const Atoms& atoms, xcb_atom_t type) {
    const auto popUps = {atoms._NET_WM_WINDOW_TYPE_MENU,
                         atoms._NET_WM_WINDOW_TYPE_POPUP_MENU,
                         atoms._NET_WM_WINDOW_TYPE_DROPDOWN_MENU,
                         atoms._NET_WM_WINDOW_TYPE_TOOLTIP,
                         atoms._NET_WM_WINDOW_TYPE_NOTIFICATION,
                         atoms._NET_WM_WINDOW_TYPE_COMBO,
                         atoms._NET_WM_WINDOW_TYPE_DND};
    return std::ranges::find(popUps, type) != popUps.end();
}

bool isApplication(const Atoms& atoms, const Candidate& candidate, std::span<const xcb_atom_t> types) {
    const xcb_atom_t type = types.empty() ? static_cast<xcb_atom_t>(XCB_ATOM_NONE) : types.front();
    if (isPopUp(atoms, type))
        return false;
    if (candidate.client != candidate.topLevel || !candidate.overrideRedirect)
        return true;
    // The type "normal" proves nothing, because many programs give it to every window, even to pop-ups and
    // screen lockers.
    return type != XCB_ATOM_NONE && type != atoms._NET_WM_WINDOW_TYPE_NORMAL;
}

} // namespace

std::vector<xcb_window_t> stackingOrder(const X11Connection& connection) {
    return childrenFrom(connection, xcb_query_tree(connection.xcb(), connection.root()));
}

std::vector<xcb_window_t> applicationWindows(const X11Connection& connection,
                                             const std::vector<xcb_window_t>& topLevels) {
    auto candidates = viewableOf(connection, topLevels);
    FrameReader(connection).findClients(candidates);
    std::vector<xcb_get_property_cookie_t> cookies;
    cookies.reserve(candidates.size());
    for (const auto& candidate : candidates)
        cookies.push_back(requestProperty(connection, candidate.client,
                                          connection.atoms()._NET_WM_WINDOW_TYPE, mostBytesOfTypes));
    std::vector<xcb_window_t> found;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        const auto types = takeProperty(connection, cookies[i]);
        if (types.answered() && isApplication(connection.atoms(), candidates[i], types.items(XCB_ATOM_ATOM)))
            found.push_back(candidates[i].topLevel);
    }
    return found;
}

} // namespace mirrolet::platform::desktop::x11
