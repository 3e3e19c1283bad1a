#include "platform/desktop/keys/KeySymbolLabel.h"

#include <algorithm>
#include <array>
#include <utility>
#include <xkbcommon/xkbcommon.h>

namespace mirrolet::platform::desktop {

namespace {

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

std::string keySymbolLabel(std::uint32_t symbol) {
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

} // namespace mirrolet::platform::desktop
