#pragma once

#include <cstdint>
#include <string>

namespace mirrolet::platform {

/// Returns the label of a key (virtual key code) in the present keyboard layout, such as "P", "Space" or
/// "F5". Returns an empty string if the layout has no label for the key. Main thread only.
[[nodiscard]] std::string keyLabel(std::uint32_t virtualCode);

} // namespace mirrolet::platform
