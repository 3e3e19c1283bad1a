#pragma once

#include <cstdint>
#include <string>

namespace mirrolet {

/// Returns the name of the key with this virtual code, as printed on a US keyboard. For a key without a name,
/// returns "Key " and the code.
[[nodiscard]] std::string keyName(std::uint32_t keyCode);

/// Returns a shortcut as symbols, such as "⌥⌘P". The order is control, option, shift, command, key.
/// `modifiers` is a Carbon modifier mask.
[[nodiscard]] std::string shortcutDisplayString(std::uint32_t keyCode, std::uint32_t modifiers);

/// Returns a shortcut in words, such as "Super+Alt+P". The key is named by its label in the present keyboard
/// layout. If the layout has no label for the key, keyName() names it.
[[nodiscard]] std::string shortcutSpokenString(std::uint32_t keyCode, std::uint32_t modifiers);

} // namespace mirrolet
