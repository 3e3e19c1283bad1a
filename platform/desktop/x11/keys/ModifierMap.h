#pragma once

#include <cstdint>
#include <optional>

namespace mirrolet::platform::desktop::x11 {

class X11Connection;

/// Which of the server's eight modifier bits the keys at certain places set. A value; any thread.
struct ModifierMap {
    std::uint16_t superBits = 0;
    std::uint16_t shiftBits = 0;
    std::uint16_t altBits = 0;
    std::uint16_t controlBits = 0;
    std::uint16_t lockBits = 0; ///< CapsLock, and NumLock and ScrollLock where they are modifiers.

    /// Asks the server. None if it does not answer.
    static std::optional<ModifierMap> read(const X11Connection& connection);
    /// The bits that a combination of HotKeyModifier values sets. None if one of the keys is no modifier
    /// here.
    [[nodiscard]] std::optional<std::uint16_t> bits(std::uint32_t hotKeyModifiers) const;

    friend bool operator==(const ModifierMap&, const ModifierMap&) = default;
};

} // namespace mirrolet::platform::desktop::x11
