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

/// Describes a window of the window list. The window's owner is not included.
struct WindowDescription {
    PixelRect bounds; ///< In root-window coordinates, without a shadow that the client draws.
    int layer = 0;    ///< The value for WindowRow::layer.
    std::optional<std::string> title;
    WindowPlacement placement; ///< `viewable` is not set, because no property tells it.
};

/// Describes a window by its properties. `bounds` is the window without its border, in root-window
/// coordinates. Returns none for a dock or a desktop window, because users do not see these as windows.
std::optional<WindowDescription> describe(const PixelRect& bounds, const WindowProperties& properties,
                                          const Atoms& atoms);
WindowClass windowClass(const Property& wmClass, const Property& gtkApplicationId, const Atoms& atoms);
/// Returns the first item of a property of type CARDINAL. Returns none for any other property.
std::optional<std::uint32_t> firstCardinal(const Property& property);
/// Returns the PID that the client itself claims. Returns 0 for a number that cannot be a PID.
std::int32_t claimedPid(const Property& pid);
/// Returns the text of a property of type STRING or UTF8_STRING. Returns an empty text for any other
/// property.
std::string plainText(const Property& text, const Atoms& atoms);

} // namespace mirrolet::platform::desktop::x11
