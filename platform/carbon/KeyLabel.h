#pragma once

#include <cstdint>
#include <string>

namespace mirrolet::platform {

/// Label of a key (virtual key code) in the present keyboard layout, such as "P", "Space" or "F5". Empty if
/// the layout has none. Main thread.
[[nodiscard]] std::string keyLabel(std::uint32_t virtualCode);

} // namespace mirrolet::platform
