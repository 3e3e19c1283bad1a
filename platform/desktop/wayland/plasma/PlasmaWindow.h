#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/WindowList.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>

namespace mirrolet::platform::desktop::wayland {

/// A window as org_kde_plasma_window_management describes it.
struct PlasmaWindow {
    WindowNumber number = 0; ///< Given by PlasmaWindows, and never used for a second window.
    std::string uuid;        ///< The compositor's identifier of the window.
    std::string title;
    std::string applicationId; ///< The file ID of a desktop entry, or the WM_CLASS class of an X11 window.
    std::string resourceName;  ///< The first part of WM_CLASS of an X11 window.
    std::int32_t pid = 0;
    std::uint32_t state = 0;          ///< Flags of org_kde_plasma_window_management.state.
    PixelRect frame;                  ///< With the title bar.
    std::optional<PixelRect> content; ///< Without the title bar. None if the compositor does not report it.
    std::set<std::string> desktops;   ///< Virtual desktops. Empty for a window that is on all of them.

    [[nodiscard]] PixelRect bounds() const { return content.value_or(frame); }
    friend bool operator==(const PlasmaWindow&, const PlasmaWindow&) = default;
};

/// Returns whether the window is a dock or the background of the desktop.
[[nodiscard]] bool isPartOfTheDesktop(const PlasmaWindow& window);
[[nodiscard]] bool isActive(const PlasmaWindow& window);
[[nodiscard]] bool isMinimized(const PlasmaWindow& window);
/// Returns whether the window is left out of task bars, as the program's own prompt is.
[[nodiscard]] bool skipsTaskBar(const PlasmaWindow& window);
/// Returns 1 for a window that is kept above others, -1 for one that is kept below, otherwise 0.
[[nodiscard]] int layerOf(const PlasmaWindow& window);
[[nodiscard]] bool isOnDesktop(const PlasmaWindow& window, const std::string& desktop);

} // namespace mirrolet::platform::desktop::wayland
