#pragma once

#include <cstdint>
#include <optional>

namespace mirrolet::platform::desktop::x11 {

/// Tells whether and where a window manager shows a window.
struct WindowPlacement {
    bool viewable = false;  ///< The window and all its parents are mapped.
    bool minimized = false; ///< The window has the state _NET_WM_STATE_HIDDEN.
    bool iconic = false;    ///< WM_STATE is IconicState (minimized, shaded or on another workspace).
    std::optional<std::uint32_t> workspace; ///< The number in _NET_WM_DESKTOP. None if absent.
};

/// Describes the workspaces, as far as the window manager tells.
struct Workspaces {
    std::optional<std::uint32_t> current; ///< None if there are no workspaces.
    /// Whether a window on another workspace looks like a shown one. Some window managers leave such a window
    /// mapped, with NormalState in WM_STATE.
    bool othersLookShown = false;
};

[[nodiscard]] bool isOnAnotherWorkspace(const WindowPlacement& placement, const Workspaces& workspaces);

/// Returns whether the window counts as on screen. A mirrored window counts even while it is on another
/// workspace, because the user sees the mirror. A mirrored window that is minimized counts while it is
/// viewable, because it still draws. A window without a mirror counts only while the window manager shows it.
[[nodiscard]] bool isOnScreen(const WindowPlacement& placement, const Workspaces& workspaces, bool mirrored);

} // namespace mirrolet::platform::desktop::x11
