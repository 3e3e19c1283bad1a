#include "platform/desktop/x11/windows/WindowRequest.h"

#include <cstdint>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

// A client can set a title of megabytes. Longer titles are cut, because a user reads no more than this.
constexpr std::uint32_t mostBytesOfTitle = 4096;
constexpr std::uint32_t mostBytesOfList = 512;

} // namespace

WindowRequest::WindowRequest(X11Connection& connection, xcb_window_t window, const Options& options)
    : connection(connection), window(window), geometry(xcb_get_geometry(connection.xcb(), window)),
      position(xcb_translate_coordinates(connection.xcb(), window, connection.root(), 0, 0)),
      netName(ask(connection.atoms()._NET_WM_NAME, mostBytesOfTitle)),
      name(ask(XCB_ATOM_WM_NAME, mostBytesOfTitle)),
      state(ask(connection.atoms()._NET_WM_STATE, mostBytesOfList)),
      types(ask(connection.atoms()._NET_WM_WINDOW_TYPE, mostBytesOfList)),
      frameExtents(ask(connection.atoms()._GTK_FRAME_EXTENTS, mostBytesOfList)),
      owner(connection, window, options.claimedPid) {
    if (options.wmState)
        wmState = ask(connection.atoms().WM_STATE, mostBytesOfList);
    if (options.workspace)
        workspace = ask(connection.atoms()._NET_WM_DESKTOP, mostBytesOfList);
}

xcb_get_property_cookie_t WindowRequest::ask(xcb_atom_t property, std::uint32_t mostBytes) const {
    return requestProperty(connection, window, property, mostBytes);
}

std::optional<WindowRequest::Answer> WindowRequest::take(const ClientProcesses& clients) {
    auto description = takeDescription();
    auto whose = owner.take(clients);
    if (!description)
        return std::nullopt;
    return Answer{std::move(*description), std::move(whose)};
}

std::optional<PixelRect> WindowRequest::takeBounds() {
    const auto size = connection.reply<xcb_get_geometry_reply>(geometry, windowGone);
    const auto origin = connection.reply<xcb_translate_coordinates_reply>(position, windowGone);
    if (!size || !origin)
        return std::nullopt;
    return PixelRect{origin->dst_x, origin->dst_y, size->width, size->height};
}

PropertyReply WindowRequest::takeIfAsked(const std::optional<xcb_get_property_cookie_t>& cookie) const {
    return cookie ? takeProperty(connection, *cookie) : PropertyReply(nullptr);
}

std::optional<WindowDescription> WindowRequest::takeDescription() {
    const auto bounds = takeBounds();
    const auto netNameReply = takeProperty(connection, netName);
    const auto nameReply = takeProperty(connection, name);
    const auto stateReply = takeProperty(connection, state);
    const auto typesReply = takeProperty(connection, types);
    const auto extentsReply = takeProperty(connection, frameExtents);
    const auto wmStateReply = takeIfAsked(wmState);
    const auto workspaceReply = takeIfAsked(workspace);
    if (!bounds)
        return std::nullopt;
    return describe(
        *bounds,
        {netNameReply, nameReply, stateReply, typesReply, extentsReply, wmStateReply, workspaceReply},
        connection.atoms());
}

} // namespace mirrolet::platform::desktop::x11
