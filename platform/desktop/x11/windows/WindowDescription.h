#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/applications/WindowOwner.h"
#include "platform/desktop/x11/server/Atoms.h"
#include "platform/desktop/x11/server/Property.h"

#include <cstdint>
#include <optional>
#include <string>

namespace mirrolet::platform::desktop::x11 {

/// The properties of a window, unchecked.
struct WindowProperties {
    Property netName;
    Property name;
    Property state;
    Property types;
    Property frameExtents;
};

/// What the list tells of a window itself, whoever owns it.
struct WindowDescription {
    PixelRect bounds; ///< Root coordinates; an invisible shadow left out.
    int layer = 0;
    std::optional<std::string> title;
};

/// The window with these inner bounds in root coordinates. None for what is no window to a user: a dock, a
/// desktop, a hidden one. Pure.
std::optional<WindowDescription> describe(const PixelRect& bounds, const WindowProperties& properties,
                                          const Atoms& atoms);
WindowClass windowClass(const Property& wmClass, const Property& gtkApplicationId, const Atoms& atoms);
/// What the client says its process is; 0 for nothing credible.
std::int32_t claimedPid(const Property& pid);
/// A text of type STRING or UTF8_STRING; empty otherwise.
std::string plainText(const Property& text, const Atoms& atoms);

} // namespace mirrolet::platform::desktop::x11
