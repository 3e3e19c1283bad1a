#include "platform/desktop/x11/keys/ModifierMap.h"

#include "platform/desktop/HotKeys.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/server/XcbReply.h"

#include <algorithm>
#include <span>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr xcb_keysym_t numLockSymbol = 0xff7f;
constexpr xcb_keysym_t scrollLockSymbol = 0xff14;
constexpr int modifierCount = 8;

/// The key codes of a modifier's left and right key. A key code is the evdev code plus 8.
struct Places {
    xcb_keycode_t left;
    xcb_keycode_t right;
};
constexpr Places superKeys{125 + 8, 126 + 8};
constexpr Places shiftKeys{42 + 8, 54 + 8};
constexpr Places altKeys{56 + 8, 100 + 8};
constexpr Places controlKeys{29 + 8, 97 + 8};

std::uint16_t bitsOfKey(std::span<const xcb_keycode_t> mapping, xcb_keycode_t key) {
    std::uint16_t bits = 0;
    for (std::size_t i = 0; i < mapping.size(); ++i)
        if (mapping[i] == key)
            bits |= static_cast<std::uint16_t>(1U << (i * modifierCount / mapping.size()));
    return bits;
}

/// Returns the modifier bits of the left key, without the bits of the locks. Returns those of the right key
/// if the left key has none, as when Ctrl and CapsLock are swapped.
std::uint16_t bitsOfPlaces(std::span<const xcb_keycode_t> mapping, Places places, std::uint16_t locks) {
    const auto left = static_cast<std::uint16_t>(bitsOfKey(mapping, places.left) & ~locks);
    return left ? left : static_cast<std::uint16_t>(bitsOfKey(mapping, places.right) & ~locks);
}

std::uint16_t lockBitsOf(std::span<const xcb_keycode_t> mapping,
                         const xcb_get_keyboard_mapping_reply_t& symbols, xcb_keycode_t firstKey) {
    std::uint16_t bits = XCB_MOD_MASK_LOCK;
    const auto* symbol = xcb_get_keyboard_mapping_keysyms(&symbols);
    const int count = xcb_get_keyboard_mapping_keysyms_length(&symbols);
    for (int i = 0; i < count; ++i)
        if (symbol[i] == numLockSymbol || symbol[i] == scrollLockSymbol)
            bits |=
                bitsOfKey(mapping, static_cast<xcb_keycode_t>(firstKey + i / symbols.keysyms_per_keycode));
    return static_cast<std::uint16_t>(bits & ~(XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL));
}

} // namespace

std::optional<ModifierMap> ModifierMap::read(const X11Connection& connection) {
    const auto* setup = xcb_get_setup(connection.xcb());
    const auto keyCount = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto mappingCookie = xcb_get_modifier_mapping(connection.xcb());
    const auto symbolsCookie = xcb_get_keyboard_mapping(connection.xcb(), setup->min_keycode, keyCount);
    const auto reply = connection.reply<xcb_get_modifier_mapping_reply>(mappingCookie);
    const auto symbols = connection.reply<xcb_get_keyboard_mapping_reply>(symbolsCookie);
    if (!reply || !symbols || symbols->keysyms_per_keycode == 0)
        return std::nullopt;
    const std::span<const xcb_keycode_t> mapping(
        xcb_get_modifier_mapping_keycodes(reply.get()),
        static_cast<std::size_t>(xcb_get_modifier_mapping_keycodes_length(reply.get())));
    ModifierMap map;
    map.lockBits = lockBitsOf(mapping, *symbols, setup->min_keycode);
    map.superBits = bitsOfPlaces(mapping, superKeys, map.lockBits);
    map.shiftBits = bitsOfPlaces(mapping, shiftKeys, map.lockBits);
    map.altBits = bitsOfPlaces(mapping, altKeys, map.lockBits);
    map.controlBits = bitsOfPlaces(mapping, controlKeys, map.lockBits);
    return map;
}

std::optional<std::uint16_t> ModifierMap::bits(std::uint32_t hotKeyModifiers) const {
    std::uint16_t result = 0;
    for (const auto& [modifier, bitsOfModifier] :
         {std::pair(superModifier, superBits), std::pair(shiftModifier, shiftBits),
          std::pair(altModifier, altBits), std::pair(controlModifier, controlBits)}) {
        if (!(hotKeyModifiers & modifier))
            continue;
        if (!bitsOfModifier)
            return std::nullopt;
        result |= bitsOfModifier;
        hotKeyModifiers &= ~static_cast<std::uint32_t>(modifier);
    }
    return hotKeyModifiers == 0 ? std::optional(result) : std::nullopt;
}

} // namespace mirrolet::platform::desktop::x11
