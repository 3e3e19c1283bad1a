#pragma once

#include "platform/desktop/Applications.h"
#include "platform/desktop/applications/ApplicationRegistry.h"
#include "platform/desktop/wayland/plasma/ClassSpelling.h"
#include "platform/desktop/wayland/plasma/PlasmaWindowModel.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

/// Tells which applications the windows of a Plasma session belong to. Any thread.
class PlasmaApplications final : public Applications {
  public:
    /// `x11Windows` is the list of XWayland's windows.
    PlasmaApplications(const PlasmaWindowModel& windows, WindowList& x11Windows);

    std::optional<Application> frontmost() override;
    std::optional<Application> running(std::int32_t pid) override { return registry.running(pid); }

    /// Returns the applications of all windows on screen, in the order of the windows. The window list calls
    /// this.
    std::vector<Application> applicationsOf(const std::vector<PlasmaWindow>& onScreen);

  private:
    [[nodiscard]] WindowOwner ownerOf(const PlasmaWindow& window) const;

    const PlasmaWindowModel& windows;
    ClassSpelling spelling;
    ApplicationRegistry registry;
};

} // namespace mirrolet::platform::desktop::wayland
