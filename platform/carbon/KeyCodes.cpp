#include "platform/carbon/KeyCodes.h"

#include <algorithm>
#include <iterator>

namespace mirrolet::platform {

namespace {

struct KeyPair {
    std::uint32_t virtualCode;
    std::uint32_t evdevCode;
};

// Each row is the virtual key code and the evdev code of one key. Both codes stand for a place on the
// keyboard, whatever is printed on the key there. The comment of a row names the key at that place on a PC
// keyboard with US, ISO or JIS layout. Tables in other programs swap the codes 10 and 50 on an ISO keyboard.
// In this table, code 50 is the key left of 1 on every keyboard.
constexpr KeyPair keys[] = {
    // clang-format off
    {0, 30}, // A key
    {1, 31}, // S key
    {2, 32}, // D key
    {3, 33}, // F key
    {4, 35}, // H key
    {5, 34}, // G key
    {6, 44}, // Z key
    {7, 45}, // X key
    {8, 46}, // C key
    {9, 47}, // V key
    {10, 86}, // ISO key between left Shift and Z
    {11, 48}, // B key
    {12, 16}, // Q key
    {13, 17}, // W key
    {14, 18}, // E key
    {15, 19}, // R key
    {16, 21}, // Y key
    {17, 20}, // T key
    {18, 2}, // 1 key
    {19, 3}, // 2 key
    {20, 4}, // 3 key
    {21, 5}, // 4 key
    {22, 7}, // 6 key
    {23, 6}, // 5 key
    {24, 13}, // = key
    {25, 10}, // 9 key
    {26, 8}, // 7 key
    {27, 12}, // - key
    {28, 9}, // 8 key
    {29, 11}, // 0 key
    {30, 27}, // ] key
    {31, 24}, // O key
    {32, 22}, // U key
    {33, 26}, // [ key
    {34, 23}, // I key
    {35, 25}, // P key
    {36, 28}, // Return key
    {37, 38}, // L key
    {38, 36}, // J key
    {39, 40}, // ' key
    {40, 37}, // K key
    {41, 39}, // ; key
    {42, 43}, // backslash key
    {43, 51}, // , key
    {44, 53}, // / key
    {45, 49}, // N key
    {46, 50}, // M key
    {47, 52}, // . key
    {48, 15}, // Tab key
    {49, 57}, // Space key
    {50, 41}, // ` key
    {51, 14}, // Backspace key
    {53, 1}, // Escape key
    {54, 126}, // right Super key
    {55, 125}, // left Super key
    {56, 42}, // left Shift key
    {57, 58}, // Caps Lock key
    {58, 56}, // left Alt key
    {59, 29}, // left Control key
    {60, 54}, // right Shift key
    {61, 100}, // right Alt key
    {62, 97}, // right Control key
    {64, 187}, // F17 key
    {65, 83}, // keypad . key
    {67, 55}, // keypad * key
    {69, 78}, // keypad + key
    {71, 69}, // Num Lock key
    {72, 115}, // volume up key
    {73, 114}, // volume down key
    {74, 113}, // mute key
    {75, 98}, // keypad / key
    {76, 96}, // keypad Enter key
    {78, 74}, // keypad - key
    {79, 188}, // F18 key
    {80, 189}, // F19 key
    {81, 117}, // keypad = key
    {82, 82}, // keypad 0 key
    {83, 79}, // keypad 1 key
    {84, 80}, // keypad 2 key
    {85, 81}, // keypad 3 key
    {86, 75}, // keypad 4 key
    {87, 76}, // keypad 5 key
    {88, 77}, // keypad 6 key
    {89, 71}, // keypad 7 key
    {90, 190}, // F20 key
    {91, 72}, // keypad 8 key
    {92, 73}, // keypad 9 key
    {93, 124}, // JIS Yen key
    {94, 89}, // JIS underscore key
    {95, 95}, // JIS keypad comma key
    {96, 63}, // F5 key
    {97, 64}, // F6 key
    {98, 65}, // F7 key
    {99, 61}, // F3 key
    {100, 66}, // F8 key
    {101, 67}, // F9 key
    {102, 123}, // JIS Eisu key
    {103, 87}, // F11 key
    {104, 122}, // JIS Kana key
    {105, 183}, // F13 key
    {106, 186}, // F16 key
    {107, 184}, // F14 key
    {109, 68}, // F10 key
    {110, 127}, // context menu key
    {111, 88}, // F12 key
    {113, 185}, // F15 key
    {114, 110}, // Insert key
    {115, 102}, // Home key
    {116, 104}, // Page Up key
    {117, 111}, // Delete key
    {118, 62}, // F4 key
    {119, 107}, // End key
    {120, 60}, // F2 key
    {121, 109}, // Page Down key
    {122, 59}, // F1 key
    {123, 105}, // left arrow key
    {124, 106}, // right arrow key
    {125, 108}, // down arrow key
    {126, 103}, // up arrow key
    // clang-format on
};

/// A key without a row in the table gets its evdev code plus `firstOther` as virtual code. Such a code is
/// above every virtual code in the table.
constexpr std::uint32_t firstOther = 0x100;
constexpr std::uint32_t lastEvdev = 0x2ff;

const KeyPair* pairWith(std::uint32_t KeyPair::*side, std::uint32_t code) {
    const auto* found =
        std::find_if(std::begin(keys), std::end(keys), [=](const auto& key) { return key.*side == code; });
    return found == std::end(keys) ? nullptr : found;
}

} // namespace

std::optional<std::uint32_t> evdevFromVirtual(std::uint32_t virtualCode) {
    if (const auto* pair = pairWith(&KeyPair::virtualCode, virtualCode))
        return pair->evdevCode;
    if (virtualCode <= firstOther || virtualCode > firstOther + lastEvdev)
        return std::nullopt;
    const auto evdevCode = virtualCode - firstOther;
    // If the table has a row for the evdev code, the key's only virtual code is the one in that row.
    return pairWith(&KeyPair::evdevCode, evdevCode) ? std::nullopt : std::optional(evdevCode);
}

std::optional<std::uint32_t> virtualFromEvdev(std::uint32_t evdevCode) {
    if (const auto* pair = pairWith(&KeyPair::evdevCode, evdevCode))
        return pair->virtualCode;
    if (evdevCode == 0 || evdevCode > lastEvdev)
        return std::nullopt;
    return firstOther + evdevCode;
}

} // namespace mirrolet::platform
