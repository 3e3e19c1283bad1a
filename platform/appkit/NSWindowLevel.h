#pragma once

namespace mirrolet::platform::NSWindowLevel {

// The levels of windows. A window stays in front of every window of a lower level.
inline constexpr int normal = 0;
inline constexpr int floating = 3;
inline constexpr int modalPanel = 8;

} // namespace mirrolet::platform::NSWindowLevel
