#pragma once

#include "platform/desktop/Applications.h"
#include "platform/desktop/applications/ApplicationRegistry.h"
#include "platform/desktop/wayland/ext/ToplevelModel.h"
#include "platform/foundation/Mutex.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

/// Tells which applications the windows of a session with the standard protocols belong to. The protocols do
/// not tell a window's process, so windows with the same application ID belong to one application. Any
/// thread.
class ToplevelApplications final : public Applications {
  public:
    explicit ToplevelApplications(const ToplevelModel& windows);

    /// While a window of this program is active, returns the application that was active before, because the
    /// prompt cannot be told from the settings window.
    std::optional<Application> frontmost() override;
    std::optional<Application> running(std::int32_t pid) override { return registry.running(pid); }

    /// Returns the applications of all windows on screen, in the order of the windows. The window list calls
    /// this.
    std::vector<Application> applicationsOf(const std::vector<Toplevel>& onScreen);

  private:
    [[nodiscard]] WindowOwner ownerOf(const Toplevel& window);

    const ToplevelModel& windows;
    ApplicationRegistry registry;
    Mutex clientsMutex;
    /// A number for each application ID, which stands for the unknown process.
    std::map<std::string, std::uint32_t> clients MIRROLET_GUARDED_BY(clientsMutex);
};

} // namespace mirrolet::platform::desktop::wayland
