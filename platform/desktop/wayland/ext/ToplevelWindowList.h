#pragma once

#include "platform/desktop/WindowList.h"
#include "platform/desktop/wayland/ext/SizeMeasurements.h"
#include "platform/desktop/wayland/ext/ToplevelApplications.h"
#include "platform/desktop/wayland/ext/ToplevelModel.h"
#include "platform/desktop/wayland/ext/ToplevelSizes.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

/// Takes the windows on screen from the ToplevelModel, without waiting for the compositor. Rows have no
/// position and no layer, because the protocols tell neither. A window is listed once its size has been
/// measured. A window counts as on screen unless it is minimized. The protocols do not tell which workspace
/// it is on. A mirrored window counts in any case, because the compositor draws it for the mirror. Any
/// thread.
class ToplevelWindowList final : public WindowList {
  public:
    /// Returns whether a mirror shows the window now. Called on any thread, for each window of the list.
    using IsMirrored = std::function<bool(WindowNumber)>;

    ToplevelWindowList(const ToplevelModel& windows, ToplevelSizes& sizes, SizeMeasurements& measurements,
                       ToplevelApplications& applications, IsMirrored isMirrored)
        : windows(windows), sizes(sizes), measurements(measurements), applications(applications),
          isMirrored(std::move(isMirrored)) {}

    std::optional<std::vector<WindowRow>> onScreenWindows() override;
    /// Begins to measure windows whose size has to be measured, and returns at once. To be called when a
    /// window has appeared, so that the next poll finds it.
    void measure() { measure(candidates()); }

  private:
    /// Returns the windows that are on screen, front to back.
    [[nodiscard]] std::vector<Toplevel> candidates() const;
    void measure(const std::vector<Toplevel>& onScreen);

    const ToplevelModel& windows;
    ToplevelSizes& sizes;
    SizeMeasurements& measurements;
    ToplevelApplications& applications;
    const IsMirrored isMirrored;
};

} // namespace mirrolet::platform::desktop::wayland
