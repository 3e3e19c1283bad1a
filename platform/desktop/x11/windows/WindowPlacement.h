#pragma once

#include <cstdint>
#include <optional>

namespace mirrolet::platform::desktop::x11 {

/// Tells whether and where a window manager shows a window.
struct WindowPlacement {
    bool viewable = false;  ///< The window and all its parents are mapped.
    bool minimized = false; ///< _NET_WM_STATE_HIDDEN.
    bool iconic = false;    ///< WM_STATE is IconicState: minimized, shaded or on another workspace.
    std::optional<std::uint32_t> workspace; ///< The number in _NET_WM_DESKTOP. None if absent.
};

/// The workspaces, as far as the window manager tells.
struct Workspaces {
    std::optional<std::uint32_t> current; ///< None without workspaces.
    /// The window manager leaves windows of other workspaces mapped, and their WM_STATE says NormalState.
    bool othersLookShown = false;
};

[[nodiscard]] bool isOnAnotherWorkspace(const WindowPlacement& placement, const Workspaces& workspaces);

/// Returns whether the window counts as on screen. A mirrored window counts while the user is on another
/// workspace, because the user sees the mirror there. A minimized mirrored window counts while the window
/// stays viewable, because the mirror is live. Any other window counts only where the user sees it.
[[nodiscard]] bool isOnScreen(const WindowPlacement& placement, const Workspaces& workspaces, bool mirrored);

} // namespace mirrolet::platform::desktop::x11
