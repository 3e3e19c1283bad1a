#pragma once

#include <cstdint>
#include <optional>

namespace mirrolet::platform::desktop::x11 {

class X11Connection;

/// Tells which of the server's modifier bits each modifier key sets. A modifier key is identified by its
/// place on the keyboard.
struct ModifierMap {
    std::uint16_t superBits = 0;
    std::uint16_t shiftBits = 0;
    std::uint16_t altBits = 0;
    std::uint16_t controlBits = 0;
    std::uint16_t lockBits = 0; ///< The bits of CapsLock, and of NumLock and ScrollLock if they have any.

    /// Asks the server which keys are modifiers. Returns none if the server does not answer.
    static std::optional<ModifierMap> read(const X11Connection& connection);
    /// Returns the bits of a combination of HotKeyModifier values. Returns none if one of the keys is no
    /// modifier on this keyboard.
    [[nodiscard]] std::optional<std::uint16_t> bits(std::uint32_t hotKeyModifiers) const;

    friend bool operator==(const ModifierMap&, const ModifierMap&) = default;
};

} // namespace mirrolet::platform::desktop::x11
