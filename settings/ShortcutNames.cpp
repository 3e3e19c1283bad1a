#include "settings/ShortcutNames.h"

#include "platform/carbon/CarbonEvents.h"
#include "platform/carbon/KeyLabel.h"

#include <array>
#include <utility>

namespace mirrolet {

using namespace platform;

namespace {

// The names of the keys, indexed by virtual key code. A key without a name has an empty string. The number at
// the end of a row is the code of the row's first key.
constexpr std::array<const char*, 127> names = {
    "A",  "S",   "D",  "F",   "H", "G", "Z",  "X",  "C",  "V",     //   0
    "",   "B",   "Q",  "W",   "E", "R", "Y",  "T",  "1",  "2",     //  10
    "3",  "4",   "6",  "5",   "=", "9", "7",  "-",  "8",  "0",     //  20
    "]",  "O",   "U",  "[",   "I", "P", "↩",  "L",  "J",  "'",     //  30
    "K",  ";",   "\\", ",",   "/", "N", "M",  ".",  "⇥",  "Space", //  40
    "`",  "⌫",   "",   "",    "",  "",  "",   "",   "",   "",      //  50
    "",   "",    "",   "",    "",  "",  "",   "",   "",   "",      //  60
    "",   "",    "",   "",    "",  "",  "",   "",   "",   "",      //  70
    "",   "",    "",   "",    "",  "",  "",   "",   "",   "",      //  80
    "",   "",    "",   "",    "",  "",  "F5", "F6", "F7", "F3",    //  90
    "F8", "F9",  "",   "F11", "",  "",  "",   "",   "",   "F10",   // 100
    "",   "F12", "",   "",    "",  "",  "",   "",   "F4", "",      // 110
    "F2", "",    "F1", "←",   "→", "↓", "↑",                       // 120
};

} // namespace

std::string keyName(std::uint32_t keyCode) {
    if (keyCode < names.size() && *names[keyCode] != '\0')
        return names[keyCode];
    return "Key " + std::to_string(keyCode);
}

std::string shortcutDisplayString(std::uint32_t keyCode, std::uint32_t modifiers) {
    std::string result;
    for (const auto& [mask, symbol] : {std::pair{controlKey, "⌃"}, std::pair{optionKey, "⌥"},
                                       std::pair{shiftKey, "⇧"}, std::pair{cmdKey, "⌘"}}) {
        if ((modifiers & mask) != 0)
            result += symbol;
    }
    return result + keyName(keyCode);
}

std::string shortcutSpokenString(std::uint32_t keyCode, std::uint32_t modifiers) {
    std::string result;
    for (const auto& [mask, word] : {std::pair{cmdKey, "Super+"}, std::pair{controlKey, "Ctrl+"},
                                     std::pair{optionKey, "Alt+"}, std::pair{shiftKey, "Shift+"}}) {
        if ((modifiers & mask) != 0)
            result += word;
    }
    const std::string label = keyLabel(keyCode);
    return result + (label.empty() ? keyName(keyCode) : label);
}

} // namespace mirrolet
