#include "platform/desktop/x11/keys/KeyLabels.h"

#include "platform/desktop/x11/server/XcbXkb.h"

#include <algorithm>
#include <array>
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
    // The list begins with two symbols for each of the first two groups. The place of other groups is not
    // fixed.
    const bool second = group == 1 && xcb_get_keyboard_mapping_keysyms_length(reply.get()) > 2;
    return second && symbols[2] != XKB_KEY_NoSymbol ? symbols[2] : symbols[0];
}

/// Replaces the name of a key symbol by the name that people know.
std::string commonName(std::string name) {
    constexpr std::array names = {std::pair{"space", "Space"}, std::pair{"Prior", "Page Up"},
                                  std::pair{"Next", "Page Down"}, std::pair{"Escape", "Esc"},
                                  std::pair{"BackSpace", "Backspace"}};
    for (const auto& [raw, known] : names)
        if (name == raw)
            return known;
    std::replace(name.begin(), name.end(), '_', ' ');
    return name;
}

} // namespace

std::string keyLabelOf(const X11Connection& connection, xcb_keycode_t key) {
    const xkb_keysym_t symbol = symbolOf(connection, key);
    if (symbol == XKB_KEY_NoSymbol)
        return {};
    std::array<char, 64> text{};
    const bool types = xkb_keysym_to_utf32(symbol) > ' ' && xkb_keysym_to_utf32(symbol) != 0x7f;
    if (types && xkb_keysym_to_utf8(xkb_keysym_to_upper(symbol), text.data(), text.size()) > 0)
        return text.data();
    if (xkb_keysym_get_name(symbol, text.data(), text.size()) <= 0)
        return {};
    return commonName(text.data());
}

} // namespace mirrolet::platform::desktop::x11
