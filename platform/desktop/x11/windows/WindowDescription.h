#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/applications/WindowOwner.h"
#include "platform/desktop/x11/server/Atoms.h"
#include "platform/desktop/x11/server/Property.h"
#include "platform/desktop/x11/windows/WindowPlacement.h"

#include <cstdint>
#include <optional>
#include <string>

namespace mirrolet::platform::desktop::x11 {

/// The properties of a window as the server gave them. Absent properties are left empty.
struct WindowProperties {
    Property netName;
    Property name;
    Property state;
    Property types;
    Property frameExtents;
    Property wmState = {};
    Property workspace = {};
};

/// A window's entry in the list, without the window's owner.
struct WindowDescription {
    PixelRect bounds; ///< Root coordinates, without an invisible shadow.
    int layer = 0;    ///< The same number as WindowRow's layer.
    std::optional<std::string> title;
    WindowPlacement placement; ///< Without `viewable`, which no property tells.
};

/// Describes a window that has these bounds without its border, in root coordinates. Returns none for a dock
/// or a desktop window, because users do not see these as windows. Pure.
std::optional<WindowDescription> describe(const PixelRect& bounds, const WindowProperties& properties,
                                          const Atoms& atoms);
WindowClass windowClass(const Property& wmClass, const Property& gtkApplicationId, const Atoms& atoms);
/// Returns the first item of a property of type CARDINAL. Returns none for any other property.
std::optional<std::uint32_t> firstCardinal(const Property& property);
/// Returns the process that the client says it is. Returns 0 for a number that cannot be a process.
std::int32_t claimedPid(const Property& pid);
/// Returns the text of a property of type STRING or UTF8_STRING. Returns an empty text for any other
/// property.
std::string plainText(const Property& text, const Atoms& atoms);

} // namespace mirrolet::platform::desktop::x11
