#include "platform/desktop/x11/panel/PanelProperties.h"

#include "platform/desktop/x11/panel/ManagerMessage.h"
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
constexpr std::uint32_t mostBytesOfProperty = 256;
// The nine items of WM_HINTS begin with flags and input.
constexpr std::size_t hintsLength = 9;
constexpr std::uint32_t inputHint = 1;
// The items of _MOTIF_WM_HINTS are flags, functions, decorations, input mode and status.
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
    if (stacking == PanelStacking::floating) // WindowShadow draws a shadow, so no other is wanted.
        write(connection, panel, atoms._COMPTON_SHADOW, XCB_ATOM_CARDINAL, std::array{0U});
    writeUserTime();
}

/// Writes the time of the panel's last use. A window manager uses this time to decide whether a newly mapped
/// panel gets the focus. A dialog may get the focus, so the time is removed from a dialog. Waits for the
/// server.
void PanelProperties::writeUserTime() const {
    const auto property = connection.atoms()._NET_WM_USER_TIME;
    if (stacking == PanelStacking::dialog) {
        connection.succeeds(xcb_delete_property_checked(connection.xcb(), panel, property), {});
        return;
    }
    const std::uint32_t neverUsed = 0; // Tells the window manager not to focus the panel.
    connection.succeeds(xcb_change_property_checked(connection.xcb(), XCB_PROP_MODE_REPLACE, panel, property,
                                                    XCB_ATOM_CARDINAL, 32, 1, &neverUsed),
                        {});
}

void PanelProperties::writeStates(std::vector<std::uint32_t> states) const {
    const auto& atoms = connection.atoms();
    std::vector<std::uint32_t> wanted = {atoms._NET_WM_STATE_SKIP_TASKBAR, atoms._NET_WM_STATE_SKIP_PAGER,
                                         atoms._NET_WM_STATE_STICKY};
    if (stacking == PanelStacking::dialog)
        wanted.push_back(atoms._NET_WM_STATE_ABOVE);
    for (const auto state : wanted)
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
    if (stacking == PanelStacking::floating)
        return;
    const auto& atoms = connection.atoms();
    sendToManager(connection, panel, atoms._NET_WM_DESKTOP, {everyDesktop, MessageSource::application});
    addStates(atoms._NET_WM_STATE_SKIP_TASKBAR, atoms._NET_WM_STATE_SKIP_PAGER);
    addStates(atoms._NET_WM_STATE_STICKY,
              stacking == PanelStacking::dialog ? atoms._NET_WM_STATE_ABOVE : xcb_atom_t{XCB_ATOM_NONE});
    connection.flush();
}

void PanelProperties::addStates(xcb_atom_t first, xcb_atom_t second) const {
    sendToManager(connection, panel, connection.atoms()._NET_WM_STATE,
                  {stateAdd, first, second, MessageSource::application});
}

} // namespace mirrolet::platform::desktop::x11
