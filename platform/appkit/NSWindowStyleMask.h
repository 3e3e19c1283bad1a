#pragma once

namespace mirrolet::platform::NSWindowStyleMask {

inline constexpr unsigned borderless = 0;
inline constexpr unsigned titled = 1;
inline constexpr unsigned closable = 2;
inline constexpr unsigned miniaturizable = 4;
inline constexpr unsigned nonactivatingPanel = 128;

} // namespace mirrolet::platform::NSWindowStyleMask
