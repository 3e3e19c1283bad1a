#pragma once

#include <cstdint>
#include <optional>

namespace mirrolet::platform {

// Shortcuts are stored as virtual key codes. The keyboard sends evdev codes, and an X key code is an evdev
// code plus 8. All of these codes stand for a place on the keyboard. Common keys have the virtual codes 0 to
// 126. Every other key gets a fixed code from 257 on, so that any key can be part of a shortcut.

/// Converts a virtual code to an evdev code. Returns none if no key has the virtual code.
[[nodiscard]] std::optional<std::uint32_t> evdevFromVirtual(std::uint32_t virtualCode);
/// Converts an evdev code to a virtual code. Returns none for 0 and for numbers that are too large for an
/// evdev code.
[[nodiscard]] std::optional<std::uint32_t> virtualFromEvdev(std::uint32_t evdevCode);

} // namespace mirrolet::platform
