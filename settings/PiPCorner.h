#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace mirrolet {

/// The corner of the screen where a new mirror is placed. The settings file contains the raw value.
enum class PiPCorner { bottomRight, bottomLeft, topRight, topLeft };

/// Every corner, in the order in which the settings window lists them.
inline constexpr std::array allPiPCorners = {PiPCorner::bottomRight, PiPCorner::bottomLeft,
                                             PiPCorner::topRight, PiPCorner::topLeft};

[[nodiscard]] std::string rawValue(PiPCorner corner);
[[nodiscard]] std::optional<PiPCorner> pipCornerFromRawValue(std::string_view raw);

} // namespace mirrolet
