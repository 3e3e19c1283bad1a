#pragma once

#include "platform/desktop/Applications.h"
#include "platform/desktop/applications/ApplicationRegistry.h"
#include "platform/desktop/wayland/plasma/PlasmaWindowModel.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

/// Tells which applications the windows of a Plasma session belong to. Any thread.
class PlasmaApplications final : public Applications {
  public:
    explicit PlasmaApplications(const PlasmaWindowModel& windows);

    std::optional<Application> frontmost() override;
    std::optional<Application> running(std::int32_t pid) override { return registry.running(pid); }

    /// Returns the applications of all windows on screen, in the order of the windows. The window list calls
    /// this.
    std::vector<Application> applicationsOf(const std::vector<PlasmaWindow>& onScreen);

  private:
    const PlasmaWindowModel& windows;
    ApplicationRegistry registry;
};

} // namespace mirrolet::platform::desktop::wayland
