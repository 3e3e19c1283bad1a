#pragma once

#include <cstdint>
#include <optional>

namespace mirrolet::platform::desktop::x11 {

class X11Connection;

/// The server's modifier bits that each modifier key sets. The keys are identified by their place on the
/// keyboard. A plain value, for any thread.
struct ModifierMap {
    std::uint16_t superBits = 0;
    std::uint16_t shiftBits = 0;
    std::uint16_t altBits = 0;
    std::uint16_t controlBits = 0;
    std::uint16_t lockBits = 0; ///< CapsLock, and NumLock and ScrollLock where they are modifiers.

    /// Asks the server for the map. Returns none if the server does not answer.
    static std::optional<ModifierMap> read(const X11Connection& connection);
    /// Returns the bits of a combination of HotKeyModifier values. Returns none if one of the keys is no
    /// modifier on this keyboard.
    [[nodiscard]] std::optional<std::uint16_t> bits(std::uint32_t hotKeyModifiers) const;

    friend bool operator==(const ModifierMap&, const ModifierMap&) = default;
};

} // namespace mirrolet::platform::desktop::x11
