#pragma once

#include "platform/coregraphics/Geometry.h"
#include "platform/foundation/PropertyList.h"

#include <cstdint>
#include <optional>

namespace mirrolet::platform {

/// The window server's number of a window.
using CGWindowID = std::uint32_t;
using CGWindowListOption = std::uint32_t;

inline constexpr CGWindowID kCGNullWindowID = 0;
inline constexpr CGWindowListOption kCGWindowListOptionOnScreenOnly = 1;
inline constexpr CGWindowListOption kCGWindowListExcludeDesktopElements = 16;

// Keys of one window's dictionary.
inline constexpr const char* kCGWindowNumber = "kCGWindowNumber";       ///< Unsigned 32-bit.
inline constexpr const char* kCGWindowLayer = "kCGWindowLayer";         ///< Integer, 0 for ordinary windows.
inline constexpr const char* kCGWindowBounds = "kCGWindowBounds";       ///< Dictionary of a rectangle.
inline constexpr const char* kCGWindowOwnerPID = "kCGWindowOwnerPID";   ///< Integer.
inline constexpr const char* kCGWindowOwnerName = "kCGWindowOwnerName"; ///< String.
inline constexpr const char* kCGWindowName = "kCGWindowName";           ///< String; missing without a title.

/// Returns an array with one dictionary for each window on screen, front to back, without desktops and docks.
/// Bounds are in points, from the top-left of the desktop. Returns none if the list cannot be read. Also
/// returns none for other options than on-screen windows without desktop elements, relative to no window. Any
/// thread.
std::optional<PropertyList> CGWindowListCopyWindowInfo(CGWindowListOption options,
                                                       CGWindowID relativeToWindow);

/// Reads a rectangle from a dictionary of the numbers "X", "Y", "Width" and "Height". Returns none if one of
/// them is missing or is not a number.
std::optional<CGRect> CGRectMakeWithDictionaryRepresentation(const PropertyList& dictionary);
PropertyList CGRectCreateDictionaryRepresentation(const CGRect& rect);

} // namespace mirrolet::platform
