#pragma once

#include <cstdint>
#include <optional>

namespace mirrolet::platform {

// Virtual key codes (0 to 126) are what shortcuts are stored in; evdev codes (an X key code less 8) are what
// the keyboard sends. Both name a place on the keyboard. A key that has no virtual code of its own gets a
// stable one from 257 on, so that any key can be recorded and registered.

/// None for a code that is no key's.
[[nodiscard]] std::optional<std::uint32_t> evdevFromVirtual(std::uint32_t virtualCode);
/// None for 0 and for what is beyond the evdev codes.
[[nodiscard]] std::optional<std::uint32_t> virtualFromEvdev(std::uint32_t evdevCode);

} // namespace mirrolet::platform
