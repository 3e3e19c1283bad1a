#pragma once

#include "platform/desktop/WindowList.h"
#include "platform/desktop/wayland/plasma/PlasmaApplications.h"
#include "platform/desktop/wayland/plasma/PlasmaWindowModel.h"
#include "platform/desktop/wayland/plasma/VirtualDesktops.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

/// Returns whether the window counts as on screen. A mirrored window counts even if the user cannot see it,
/// because KWin draws it for the mirror. Other windows count if they are not minimized and are on the current
/// virtual desktop. Docks never count.
[[nodiscard]] bool isOnScreen(const PlasmaWindow& window, const std::string& currentDesktop, bool mirrored);

/// Takes the windows on screen from the PlasmaWindowModel, without a request to the compositor. Any thread.
class PlasmaWindowList final : public WindowList {
  public:
    /// Returns whether a mirror shows the window now. Called on any thread, for each window of the list.
    using IsMirrored = std::function<bool(WindowNumber)>;

    PlasmaWindowList(const PlasmaWindowModel& windows, const VirtualDesktops& desktops,
                     PlasmaApplications& applications, IsMirrored isMirrored)
        : windows(windows), desktops(desktops), applications(applications),
          isMirrored(std::move(isMirrored)) {}

    std::optional<std::vector<WindowRow>> onScreenWindows() override;

  private:
    const PlasmaWindowModel& windows;
    const VirtualDesktops& desktops;
    PlasmaApplications& applications;
    const IsMirrored isMirrored;
};

} // namespace mirrolet::platform::desktop::wayland
