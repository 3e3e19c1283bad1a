#include "platform/desktop/x11/keys/KeyLabels.h"

#include "platform/desktop/keys/KeySymbolLabel.h"
#include "platform/desktop/x11/server/XcbXkb.h"

#include <xkbcommon/xkbcommon.h>

namespace mirrolet::platform::desktop::x11 {

namespace {

std::uint8_t layoutGroup(const X11Connection& connection) {
    if (!connection.extensions().xkb)
        return 0;
    const auto state = connection.reply<xcb_xkb_get_state_reply>(
        xcb_xkb_get_state(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD));
    return state ? state->group : 0;
}

xkb_keysym_t symbolOf(const X11Connection& connection, xcb_keycode_t key) {
    const auto cookie = xcb_get_keyboard_mapping(connection.xcb(), key, 1);
    const auto group = layoutGroup(connection);
    const auto reply = connection.reply<xcb_get_keyboard_mapping_reply>(cookie);
    if (!reply || xcb_get_keyboard_mapping_keysyms_length(reply.get()) == 0)
        return XKB_KEY_NoSymbol;
    const auto* symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
    // The key's list of symbols begins with two for each of the first two layout groups. The symbols of other
    // groups have no fixed place in the list. If one of those groups is active, the symbol of the first group
    // is used.
    const bool second = group == 1 && xcb_get_keyboard_mapping_keysyms_length(reply.get()) > 2;
    return second && symbols[2] != XKB_KEY_NoSymbol ? symbols[2] : symbols[0];
}

} // namespace

std::string keyLabelOf(const X11Connection& connection, xcb_keycode_t key) {
    return keySymbolLabel(symbolOf(connection, key));
}

} // namespace mirrolet::platform::desktop::x11
