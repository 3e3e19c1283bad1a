#pragma once

#include "platform/desktop/WindowList.h"

#include <cstdint>
#include <string>

namespace mirrolet::platform::desktop {

/// How a window names its application. Written by the client; believed only where nothing better is known.
struct WindowClass {
    std::string instance;         ///< First part of WM_CLASS.
    std::string name;             ///< Second part of WM_CLASS, the class.
    std::string gtkApplicationId; ///< _GTK_APPLICATION_ID.
    friend bool operator==(const WindowClass&, const WindowClass&) = default;
};

/// What a window tells of whose it is.
struct WindowOwner {
    WindowNumber window = 0;
    std::uint32_t client = 0; ///< Identifies the display server's client, where it tells.
    std::int32_t pid = 0;     ///< 0 where it is not known, as for a client on another machine.
    WindowClass windowClass;
    friend bool operator==(const WindowOwner&, const WindowOwner&) = default;
};

} // namespace mirrolet::platform::desktop
