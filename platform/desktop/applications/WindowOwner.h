#pragma once

#include "platform/desktop/WindowList.h"

#include <cstdint>
#include <string>

namespace mirrolet::platform::desktop {

/// The names that a window's client gives to its application. A client can write any names here. To find a
/// window's application, facts about the client's process are therefore tried before these names. A web
/// application is found by these names first, because a browser runs several web applications in one process.
struct WindowClass {
    std::string instance;         ///< First part of WM_CLASS.
    std::string name;             ///< Second part of WM_CLASS, the class.
    std::string gtkApplicationId; ///< _GTK_APPLICATION_ID.
    friend bool operator==(const WindowClass&, const WindowClass&) = default;
};

/// Tells which client and process a window belongs to, as far as known, and which names the client gives to
/// its application.
struct WindowOwner {
    WindowNumber window = 0;
    std::uint32_t client = 0; ///< The number that the display server gave to the client. 0 if unknown.
    std::int32_t pid = 0;     ///< 0 if unknown, as for a client on another machine.
    WindowClass windowClass;
    friend bool operator==(const WindowOwner&, const WindowOwner&) = default;
};

} // namespace mirrolet::platform::desktop
