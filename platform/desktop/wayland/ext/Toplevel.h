#pragma once

#include "platform/desktop/WindowList.h"

#include <cstdint>
#include <string>

namespace mirrolet::platform::desktop::wayland {

/// A window as ext_foreign_toplevel_list_v1 describes it.
struct ListedToplevel {
    WindowNumber number = 0; ///< Given by Toplevels, and never used for a second window.
    std::string title;
    std::string applicationId; ///< Empty for an X11 window on some compositors.
};

/// A window as zwlr_foreign_toplevel_manager_v1 describes it.
struct ManagedToplevel {
    std::uint32_t id = 0; ///< Given by Toplevels, and never used for a second window.
    std::string title;
    std::string applicationId; ///< The file ID of a desktop entry, or the WM_CLASS class of an X11 window.
    std::uint32_t states = 0;  ///< One bit for each zwlr_foreign_toplevel_handle_v1.state.
};

/// A window as both protocols together describe it.
struct Toplevel {
    WindowNumber number = 0;
    std::string title;
    std::string applicationId;
    std::uint32_t states = 0; ///< As in ManagedToplevel. 0 if the states are not known.
    friend bool operator==(const Toplevel&, const Toplevel&) = default;
};

/// Returns whether the window has the focus, as far as known.
[[nodiscard]] bool isActive(const Toplevel& window);
/// Returns whether the window is minimized, as far as known.
[[nodiscard]] bool isMinimized(const Toplevel& window);

} // namespace mirrolet::platform::desktop::wayland
