#pragma once

#include "platform/coregraphics/Geometry.h"
#include "platform/foundation/PropertyList.h"

#include <cstdint>
#include <optional>

namespace mirrolet::platform {

/// The number that the window server has given to a window.
using CGWindowID = std::uint32_t;
using CGWindowListOption = std::uint32_t;

inline constexpr CGWindowID kCGNullWindowID = 0;
inline constexpr CGWindowListOption kCGWindowListOptionOnScreenOnly = 1;
inline constexpr CGWindowListOption kCGWindowListExcludeDesktopElements = 16;

// The keys of the dictionary that describes one window.
/// The value is an unsigned 32-bit integer.
inline constexpr const char* kCGWindowNumber = "kCGWindowNumber";
/// The value is an integer, which is 0 for an ordinary window.
inline constexpr const char* kCGWindowLayer = "kCGWindowLayer";
/// The value is the dictionary of a rectangle.
inline constexpr const char* kCGWindowBounds = "kCGWindowBounds";
/// The value is an integer, the ID of the process that owns the window.
inline constexpr const char* kCGWindowOwnerPID = "kCGWindowOwnerPID";
/// The value is a string, the name of the application that owns the window.
inline constexpr const char* kCGWindowOwnerName = "kCGWindowOwnerName";
/// The value is a string. The key is missing if the window has no title.
inline constexpr const char* kCGWindowName = "kCGWindowName";

/// Returns an array with one dictionary for each window on screen, from front to back, without docks and
/// without the desktop's own background window. Bounds are in points from the desktop's top-left corner.
/// `options` must combine the two option constants above, and `relativeToWindow` must be kCGNullWindowID.
/// Returns none for other arguments, or if the list cannot be read. Any thread.
std::optional<PropertyList> CGWindowListCopyWindowInfo(CGWindowListOption options,
                                                       CGWindowID relativeToWindow);

/// Reads a rectangle from a dictionary of the numbers "X", "Y", "Width" and "Height". Returns none if one of
/// the four is missing or is not a number.
std::optional<CGRect> CGRectMakeWithDictionaryRepresentation(const PropertyList& dictionary);
PropertyList CGRectCreateDictionaryRepresentation(const CGRect& rect);

} // namespace mirrolet::platform
