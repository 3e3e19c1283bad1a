#include "platform/desktop/wayland/ext/ToplevelApplications.h"

#include "platform/foundation/DesktopEntryFiles.h"

#include <unistd.h>

namespace mirrolet::platform::desktop::wayland {

namespace {

/// The WM_CLASS class of this program's windows, which XWayland shows.
constexpr auto ownClass = "mirrolet";

bool isOurs(const Toplevel& window) {
    return window.applicationId == ownClass;
}

} // namespace

ToplevelApplications::ToplevelApplications(const ToplevelModel& windows)
    : windows(windows), registry(getpid(), ProcFolder(), DesktopEntryIndex(userApplicationFolders())) {}

/// The application ID of a native Wayland window is the file ID of a desktop entry, like _GTK_APPLICATION_ID
/// on X11.
WindowOwner ToplevelApplications::ownerOf(const Toplevel& window) {
    WindowOwner owner{.window = window.number,
                      .windowClass = {.instance = {},
                                      .name = window.applicationId,
                                      .gtkApplicationId = window.applicationId}};
    if (isOurs(window)) {
        owner.pid = getpid();
        return owner;
    }
    const MutexLock lock(clientsMutex);
    owner.client = clients.try_emplace(window.applicationId, static_cast<std::uint32_t>(clients.size()) + 1)
                       .first->second;
    return owner;
}

std::optional<Application> ToplevelApplications::frontmost() {
    const auto window = windows.active(isOurs);
    if (!window)
        return std::nullopt;
    return registry.applicationsOf({ownerOf(*window)}, false).front();
}

std::vector<Application> ToplevelApplications::applicationsOf(const std::vector<Toplevel>& onScreen) {
    std::vector<WindowOwner> owners;
    owners.reserve(onScreen.size());
    for (const auto& window : onScreen)
        owners.push_back(ownerOf(window));
    return registry.applicationsOf(owners, true);
}

} // namespace mirrolet::platform::desktop::wayland
