#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <array>
#include <cstdint>

namespace mirrolet::platform::desktop::x11 {

/// Tells who makes a request, in the terms of EWMH. A window manager may refuse a request that an application
/// makes by itself.
struct MessageSource {
    static constexpr std::uint32_t application = 1;
    static constexpr std::uint32_t pager = 2; ///< The user makes the request, for example with a task list.
};

/// Sends a client message about a managed window to the window manager, as EWMH describes it. Does not flush.
void sendToManager(const X11Connection& connection, xcb_window_t window, xcb_atom_t type,
                   const std::array<std::uint32_t, 5>& data);

} // namespace mirrolet::platform::desktop::x11
