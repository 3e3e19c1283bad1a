#include "platform/desktop/x11/panel/PanelProperties.h"

#include "platform/desktop/x11/server/Property.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr std::uint32_t everyDesktop = 0xffffffff;
constexpr std::uint32_t stateAdd = 1;
constexpr std::uint32_t sourceApplication = 1;
constexpr std::uint32_t mostBytesOfProperty = 256;
// WM_HINTS: flags, input, and seven more.
constexpr std::size_t hintsLength = 9;
constexpr std::uint32_t inputHint = 1;
// _MOTIF_WM_HINTS: flags, functions, decorations, input mode, status.
constexpr std::array<std::uint32_t, 5> noDecorations{1U << 1U, 0, 0, 0, 0};

void write(const X11Connection& connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
           std::span<const std::uint32_t> values) {
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
}

} // namespace

void PanelProperties::writeBeforeMap(bool modal) const {
    const auto& atoms = connection.atoms();
    const auto stateCookie = requestProperty(connection, panel, atoms._NET_WM_STATE, mostBytesOfProperty);
    const auto hintsCookie = requestProperty(connection, panel, XCB_ATOM_WM_HINTS, mostBytesOfProperty);
    const auto protocolsCookie = requestProperty(connection, panel, atoms.WM_PROTOCOLS, mostBytesOfProperty);
    writeStates(takeProperty(connection, stateCookie).items(XCB_ATOM_ATOM));
    const auto hints = takeProperty(connection, hintsCookie).items(XCB_ATOM_WM_HINTS);
    const auto protocols = takeProperty(connection, protocolsCookie).items(XCB_ATOM_ATOM);
    if (stacking == PanelStacking::amongNormal)
        refuseFocus(hints, protocols);

    const auto type = modal ? atoms._NET_WM_WINDOW_TYPE_DIALOG : atoms._NET_WM_WINDOW_TYPE_UTILITY;
    write(connection, panel, atoms._NET_WM_WINDOW_TYPE, XCB_ATOM_ATOM, std::array{type});
    write(connection, panel, atoms._MOTIF_WM_HINTS, atoms._MOTIF_WM_HINTS, noDecorations);
    write(connection, panel, atoms._NET_WM_DESKTOP, XCB_ATOM_CARDINAL, std::array{everyDesktop});
    if (stacking == PanelStacking::floating) // The panel has a shadow of ours, with round corners.
        write(connection, panel, atoms._COMPTON_SHADOW, XCB_ATOM_CARDINAL, std::array{0U});
    const std::uint32_t neverUsed = 0; // Asks for no focus at the map.
    connection.succeeds(xcb_change_property_checked(connection.xcb(), XCB_PROP_MODE_REPLACE, panel,
                                                    atoms._NET_WM_USER_TIME, XCB_ATOM_CARDINAL, 32, 1,
                                                    &neverUsed),
                        {});
}

void PanelProperties::writeStates(std::vector<std::uint32_t> states) const {
    const auto& atoms = connection.atoms();
    for (const auto state :
         {atoms._NET_WM_STATE_SKIP_TASKBAR, atoms._NET_WM_STATE_SKIP_PAGER, atoms._NET_WM_STATE_STICKY})
        if (std::find(states.begin(), states.end(), state) == states.end())
            states.push_back(state);
    write(connection, panel, atoms._NET_WM_STATE, XCB_ATOM_ATOM, states);
}

void PanelProperties::refuseFocus(const std::vector<std::uint32_t>& hints,
                                  const std::vector<std::uint32_t>& protocols) const {
    const auto& atoms = connection.atoms();
    std::array<std::uint32_t, hintsLength> ours{};
    std::copy_n(hints.begin(), std::min(hints.size(), hintsLength), ours.begin());
    ours[0] |= inputHint;
    ours[1] = 0;
    write(connection, panel, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, ours);

    std::vector<std::uint32_t> spoken;
    std::ranges::copy_if(protocols, std::back_inserter(spoken),
                         [&atoms](std::uint32_t protocol) { return protocol != atoms.WM_TAKE_FOCUS; });
    write(connection, panel, atoms.WM_PROTOCOLS, XCB_ATOM_ATOM, spoken);
}

void PanelProperties::requestAfterMap() const {
    if (stacking != PanelStacking::amongNormal)
        return;
    const auto& atoms = connection.atoms();
    sendToRoot(atoms._NET_WM_DESKTOP, everyDesktop, sourceApplication, 0);
    sendToRoot(atoms._NET_WM_STATE, stateAdd, atoms._NET_WM_STATE_SKIP_TASKBAR,
               atoms._NET_WM_STATE_SKIP_PAGER);
    sendToRoot(atoms._NET_WM_STATE, stateAdd, atoms._NET_WM_STATE_STICKY, 0);
    connection.flush();
}

void PanelProperties::sendToRoot(xcb_atom_t type, std::uint32_t first, std::uint32_t second,
                                 std::uint32_t third) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = panel;
    message.type = type;
    message.data.data32[0] = first;
    message.data.data32[1] = second;
    message.data.data32[2] = third;
    message.data.data32[3] = type == connection.atoms()._NET_WM_STATE ? sourceApplication : 0;
    xcb_send_event(connection.xcb(), 0, connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
}

} // namespace mirrolet::platform::desktop::x11
