#pragma once

#include <cstdint>
#include <string>

namespace mirrolet {

/// The key's name by its virtual code, as printed on a US keyboard; "Key " and the code for one without a
/// name.
[[nodiscard]] std::string keyName(std::uint32_t keyCode);

/// A shortcut as symbols, such as "⌥⌘P": control, option, shift, command, then the key. `modifiers` is a
/// Carbon mask.
[[nodiscard]] std::string shortcutDisplayString(std::uint32_t keyCode, std::uint32_t modifiers);

/// The same in this keyboard's words, such as "Super+Alt+P": the key is named as the present layout has it,
/// and by its name above where the layout has none.
[[nodiscard]] std::string shortcutSpokenString(std::uint32_t keyCode, std::uint32_t modifiers);

} // namespace mirrolet
