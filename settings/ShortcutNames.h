#pragma once

#include <cstdint>
#include <string>

namespace mirrolet {

/// Returns the name of a key by its virtual code, as printed on a US keyboard. For a key without a name,
/// returns "Key " and the code.
[[nodiscard]] std::string keyName(std::uint32_t keyCode);

/// Returns a shortcut as symbols, such as "⌥⌘P". The order is control, option, shift, command, key.
/// `modifiers` is a Carbon mask.
[[nodiscard]] std::string shortcutDisplayString(std::uint32_t keyCode, std::uint32_t modifiers);

/// Returns a shortcut in words, such as "Super+Alt+P". The key has its label in the present layout, or its
/// keyName() if the layout has none.
[[nodiscard]] std::string shortcutSpokenString(std::uint32_t keyCode, std::uint32_t modifiers);

} // namespace mirrolet
