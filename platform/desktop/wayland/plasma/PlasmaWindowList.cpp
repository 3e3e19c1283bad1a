#include "platform/desktop/wayland/plasma/PlasmaWindowList.h"

#include <cstddef>

namespace mirrolet::platform::desktop::wayland {

bool isOnScreen(const PlasmaWindow& window, const std::string& currentDesktop, bool mirrored) {
    if (isPartOfTheDesktop(window))
        return false;
    return mirrored || (!isMinimized(window) && isOnDesktop(window, currentDesktop));
}

std::optional<std::vector<WindowRow>> PlasmaWindowList::onScreenWindows() {
    const auto current = desktops.current();
    auto onScreen = windows.frontToBack();
    std::erase_if(onScreen, [&](const PlasmaWindow& window) {
        return !isOnScreen(window, current, isMirrored(window.number));
    });
    const auto owners = applications.applicationsOf(onScreen);
    std::vector<WindowRow> rows;
    rows.reserve(onScreen.size());
    for (std::size_t i = 0; i < onScreen.size(); ++i) {
        auto& window = onScreen[i];
        WindowRow row{.number = window.number,
                      .bounds = window.bounds(),
                      .layer = layerOf(window),
                      .ownerPid = owners[i].pid,
                      .ownerName = owners[i].name,
                      .title = std::nullopt};
        if (!window.title.empty())
            row.title = std::move(window.title);
        rows.push_back(std::move(row));
    }
    return rows;
}

} // namespace mirrolet::platform::desktop::wayland
