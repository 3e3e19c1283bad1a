#pragma once

#include <cstdint>
#include <string>

namespace mirrolet {

/// Name of a key by its virtual code, as printed on a US keyboard. A key without a name is "Key " and its
/// code.
[[nodiscard]] std::string keyName(std::uint32_t keyCode);

/// A shortcut as symbols, such as "⌥⌘P": control, option, shift, command, then the key. `modifiers` is a
/// Carbon mask.
[[nodiscard]] std::string shortcutDisplayString(std::uint32_t keyCode, std::uint32_t modifiers);

/// A shortcut in words, such as "Super+Alt+P". The key has the label of the present layout, or its keyName()
/// if the layout has none.
[[nodiscard]] std::string shortcutSpokenString(std::uint32_t keyCode, std::uint32_t modifiers);

} // namespace mirrolet
