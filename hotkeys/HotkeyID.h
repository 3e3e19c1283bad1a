#pragma once

#include <cstdint>
#include <optional>

namespace mirrolet {

/// The program's shortcuts. The raw value is the number under which a shortcut is registered.
enum class HotkeyID : std::uint32_t {
    togglePiPVisibility = 1,
    pipFrontmostWindow = 2,
};

[[nodiscard]] constexpr std::uint32_t rawValue(HotkeyID id) {
    return static_cast<std::uint32_t>(id);
}

[[nodiscard]] constexpr std::optional<HotkeyID> hotkeyIDFromRawValue(std::uint32_t raw) {
    if (raw != rawValue(HotkeyID::togglePiPVisibility) && raw != rawValue(HotkeyID::pipFrontmostWindow))
        return std::nullopt;
    return static_cast<HotkeyID>(raw);
}

} // namespace mirrolet
