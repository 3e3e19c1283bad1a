#include "platform/desktop/wayland/plasma/PlasmaApplications.h"

#include "platform/foundation/DesktopEntryFiles.h"

#include <unistd.h>

namespace mirrolet::platform::desktop::wayland {

namespace {

/// Returns whether the window is this program's prompt or mirror. Task bars leave these out, but show this
/// program's settings window.
bool isOurPanel(const PlasmaWindow& window) {
    return window.pid == getpid() && skipsTaskBar(window);
}

} // namespace

PlasmaApplications::PlasmaApplications(const PlasmaWindowModel& windows, WindowList& x11Windows)
    : windows(windows), spelling(x11Windows),
      registry(getpid(), ProcFolder(), DesktopEntryIndex(userApplicationFolders())) {}

std::optional<Application> PlasmaApplications::frontmost() {
    const auto window = windows.active(isOurPanel);
    if (!window || isPartOfTheDesktop(*window))
        return std::nullopt;
    spelling.learn({*window});
    return registry.applicationsOf({ownerOf(*window)}, false).front();
}

/// The application ID of a native Wayland window is the file ID of a desktop entry, like _GTK_APPLICATION_ID
/// on X11.
WindowOwner PlasmaApplications::ownerOf(const PlasmaWindow& window) const {
    return {.window = window.number,
            .client = 0,
            .pid = window.pid,
            .windowClass = {.instance = window.resourceName,
                            .name = spelling.of(window),
                            .gtkApplicationId = window.applicationId}};
}

std::vector<Application> PlasmaApplications::applicationsOf(const std::vector<PlasmaWindow>& onScreen) {
    spelling.keepOnly(onScreen);
    spelling.learn(onScreen);
    std::vector<WindowOwner> owners;
    owners.reserve(onScreen.size());
    for (const auto& window : onScreen)
        owners.push_back(ownerOf(window));
    return registry.applicationsOf(owners, true);
}

} // namespace mirrolet::platform::desktop::wayland
