#include "platform/desktop/wayland/plasma/QtKeyCodes.h"

#include <glib.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>
#include <xkbcommon/xkbcommon.h>

namespace mirrolet::platform::desktop::wayland {

namespace {

struct SymbolKey {
    xkb_keysym_t symbol;
    std::uint32_t qtKey;
};

// The keys that type no character, or a character that the number pad types too. Dead keys are left out,
// because KWin takes a dead key as a part of the next character and never as a shortcut.
constexpr SymbolKey namedKeys[] = {
    // clang-format off
    {XKB_KEY_Escape, 0x01000000},
    {XKB_KEY_Tab, 0x01000001}, {XKB_KEY_KP_Tab, 0x01000001},
    {XKB_KEY_ISO_Left_Tab, 0x01000002},
    {XKB_KEY_BackSpace, 0x01000003},
    {XKB_KEY_Return, 0x01000004},
    {XKB_KEY_KP_Enter, 0x01000005},
    {XKB_KEY_Insert, 0x01000006}, {XKB_KEY_KP_Insert, 0x01000006},
    {XKB_KEY_Delete, 0x01000007}, {XKB_KEY_KP_Delete, 0x01000007},
    {XKB_KEY_Pause, 0x01000008},
    {XKB_KEY_Print, 0x01000009},
    {XKB_KEY_Sys_Req, 0x0100000a},
    {XKB_KEY_Clear, 0x0100000b}, {XKB_KEY_KP_Begin, 0x0100000b},
    {XKB_KEY_Home, 0x01000010}, {XKB_KEY_KP_Home, 0x01000010},
    {XKB_KEY_End, 0x01000011}, {XKB_KEY_KP_End, 0x01000011},
    {XKB_KEY_Left, 0x01000012}, {XKB_KEY_KP_Left, 0x01000012},
    {XKB_KEY_Up, 0x01000013}, {XKB_KEY_KP_Up, 0x01000013},
    {XKB_KEY_Right, 0x01000014}, {XKB_KEY_KP_Right, 0x01000014},
    {XKB_KEY_Down, 0x01000015}, {XKB_KEY_KP_Down, 0x01000015},
    {XKB_KEY_Prior, 0x01000016}, {XKB_KEY_KP_Prior, 0x01000016},
    {XKB_KEY_Next, 0x01000017}, {XKB_KEY_KP_Next, 0x01000017},
    {XKB_KEY_Caps_Lock, 0x01000024},
    {XKB_KEY_Num_Lock, 0x01000025},
    {XKB_KEY_Scroll_Lock, 0x01000026},
    {XKB_KEY_Menu, 0x01000055},
    {XKB_KEY_Help, 0x01000058},
    {XKB_KEY_KP_Space, 0x20},
    {XKB_KEY_KP_Multiply, 0x2a},
    {XKB_KEY_KP_Add, 0x2b},
    {XKB_KEY_KP_Separator, 0x2c},
    {XKB_KEY_KP_Subtract, 0x2d},
    {XKB_KEY_KP_Decimal, 0x2e},
    {XKB_KEY_KP_Divide, 0x2f},
    {XKB_KEY_KP_Equal, 0x3d},
    {XKB_KEY_Muhenkan, 0x01001122},
    {XKB_KEY_Henkan, 0x01001123},
    {XKB_KEY_Hiragana_Katakana, 0x01001127},
    {XKB_KEY_Zenkaku_Hankaku, 0x0100112a},
    {XKB_KEY_Eisu_toggle, 0x01001130},
    {XKB_KEY_Hangul, 0x01001131},
    {XKB_KEY_Hangul_Hanja, 0x01001134},
    {XKB_KEY_XF86Back, 0x01000061},
    {XKB_KEY_XF86Forward, 0x01000062},
    {XKB_KEY_XF86AudioLowerVolume, 0x01000070},
    {XKB_KEY_XF86AudioMute, 0x01000071},
    {XKB_KEY_XF86AudioRaiseVolume, 0x01000072},
    {XKB_KEY_XF86AudioPlay, 0x01000080},
    {XKB_KEY_XF86AudioStop, 0x01000081},
    {XKB_KEY_XF86AudioPrev, 0x01000082},
    {XKB_KEY_XF86AudioNext, 0x01000083},
    {XKB_KEY_XF86AudioMicMute, 0x01000113},
    {XKB_KEY_XF86HomePage, 0x01000090},
    {XKB_KEY_XF86Search, 0x01000092},
    {XKB_KEY_XF86Calculator, 0x010000cb},
    {XKB_KEY_XF86Mail, 0x010000a0},
    // clang-format on
};

/// A range of symbols whose keys have the same order in Qt. `qtKey` is Qt's number for the first.
struct SymbolRange {
    xkb_keysym_t first;
    xkb_keysym_t last;
    std::uint32_t qtKey;
};
constexpr SymbolRange ranges[] = {
    {XKB_KEY_F1, XKB_KEY_F35, 0x01000030},
    {XKB_KEY_KP_0, XKB_KEY_KP_9, 0x30},
};

constexpr std::uint32_t qtShift = 0x02000000;
constexpr std::uint32_t qtControl = 0x04000000;
constexpr std::uint32_t qtAlt = 0x08000000;
constexpr std::uint32_t qtMeta = 0x10000000;
constexpr std::uint32_t qtKeypad = 0x20000000;

/// Returns whether the symbol stands for a Latin-1 character. Such a symbol has the character's code as its
/// value.
bool isLatin1(xkb_keysym_t symbol) {
    return (symbol >= 0x20 && symbol <= 0x7e) || (symbol >= 0xa0 && symbol <= 0xff);
}

/// Returns Qt's number of the key that types a character: the code point of the capital letter. Returns 0 if
/// there is none.
std::uint32_t keyOfCharacter(xkb_keysym_t symbol) {
    const auto capital = g_unichar_toupper(xkb_keysym_to_utf32(symbol));
    if (isLatin1(symbol)) // The capital of a few letters is outside of Latin-1, and Qt keeps the small one.
        return isLatin1(capital) ? capital : symbol;
    constexpr std::uint32_t lastOfOneUnit = 0xffff; // Qt has no numbers for later characters.
    return capital > ' ' && capital != 0x7f && capital <= lastOfOneUnit ? capital : 0;
}

std::uint32_t qtModifiersOf(const KeyStroke& stroke) {
    std::uint32_t modifiers = 0;
    for (const auto& [modifier, ofQt] :
         {std::pair(superModifier, qtMeta), std::pair(shiftModifier, qtShift), std::pair(altModifier, qtAlt),
          std::pair(controlModifier, qtControl)})
        if (stroke.modifiers & modifier)
            modifiers |= ofQt;
    return modifiers;
}

} // namespace

std::uint32_t qtKeyOf(std::uint32_t symbol) {
    for (const auto& [first, last, qtKey] : ranges)
        if (symbol >= first && symbol <= last)
            return qtKey + (symbol - first);
    const auto* named = std::find_if(std::begin(namedKeys), std::end(namedKeys),
                                     [symbol](const SymbolKey& key) { return key.symbol == symbol; });
    return named != std::end(namedKeys) ? named->qtKey : keyOfCharacter(symbol);
}

std::vector<std::int32_t> qtCombinationsOf(const std::vector<KeyStroke>& strokes) {
    std::set<std::uint32_t> combinations;
    for (const auto& stroke : strokes) {
        const auto key = qtKeyOf(stroke.symbol);
        if (key == 0)
            continue;
        const auto combination = key | qtModifiersOf(stroke);
        combinations.insert(combination);
        // A key of the number pad has two combinations, because KWin 5.27 does not use Qt's keypad flag.
        if (stroke.symbol >= XKB_KEY_KP_Space && stroke.symbol <= XKB_KEY_KP_Equal)
            combinations.insert(combination | qtKeypad);
    }
    return {combinations.begin(), combinations.end()};
}

} // namespace mirrolet::platform::desktop::wayland
