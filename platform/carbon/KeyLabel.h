#pragma once

#include <cstdint>
#include <string>

namespace mirrolet::platform {

/// What the present keyboard layout has on a key (virtual key code), as one would name it: "P", "Space",
/// "F5". Empty if it has nothing there. Main thread.
[[nodiscard]] std::string keyLabel(std::uint32_t virtualCode);

} // namespace mirrolet::platform
