#pragma once

#include <cstdint>
#include <optional>

namespace mirrolet::platform {

// Shortcuts are stored as virtual key codes (0 to 126). The keyboard sends evdev codes (an X key code minus
// 8). Both name a place on the keyboard. A key that has no virtual code of its own gets a stable one from 257
// on, so that any key can be recorded and registered.

/// Returns the evdev code of a key, or none if no key has the virtual code.
[[nodiscard]] std::optional<std::uint32_t> evdevFromVirtual(std::uint32_t virtualCode);
/// Returns the virtual code of a key, or none for 0 and for numbers above the evdev codes.
[[nodiscard]] std::optional<std::uint32_t> virtualFromEvdev(std::uint32_t evdevCode);

} // namespace mirrolet::platform
