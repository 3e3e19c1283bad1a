#pragma once

#include "platform/desktop/WindowList.h"

#include <cstdint>
#include <string>

namespace mirrolet::platform::desktop {

/// The names that a window gives its application. The client writes these names, so they are used only if
/// nothing more reliable is known.
struct WindowClass {
    std::string instance;         ///< First part of WM_CLASS.
    std::string name;             ///< Second part of WM_CLASS, the class.
    std::string gtkApplicationId; ///< _GTK_APPLICATION_ID.
    friend bool operator==(const WindowClass&, const WindowClass&) = default;
};

/// The client and process that a window belongs to, as far as the display server tells, and the window's
/// names.
struct WindowOwner {
    WindowNumber window = 0;
    std::uint32_t client = 0; ///< The display server's number of the client. 0 if the server has none.
    std::int32_t pid = 0;     ///< 0 if unknown, as for a client on another machine.
    WindowClass windowClass;
    friend bool operator==(const WindowOwner&, const WindowOwner&) = default;
};

} // namespace mirrolet::platform::desktop
