#include "platform/desktop/wayland/ext/ToplevelWindowList.h"

#include <chrono>
#include <cstddef>

namespace mirrolet::platform::desktop::wayland {

std::vector<Toplevel> ToplevelWindowList::candidates() const {
    auto onScreen = windows.frontToBack();
    std::erase_if(onScreen, [this](const Toplevel& window) {
        return isMinimized(window) && !isMirrored(window.number);
    });
    return onScreen;
}

void ToplevelWindowList::measure(const std::vector<Toplevel>& onScreen) {
    measurements.begin(sizes.due(onScreen, std::chrono::steady_clock::now()));
}

std::optional<std::vector<WindowRow>> ToplevelWindowList::onScreenWindows() {
    auto onScreen = candidates();
    measure(onScreen);
    const auto owners = applications.applicationsOf(onScreen);
    std::vector<WindowRow> rows;
    rows.reserve(onScreen.size());
    for (std::size_t i = 0; i < onScreen.size(); ++i) {
        const auto size = sizes.sizeOf(onScreen[i].number);
        if (!size)
            continue;
        auto& row = rows.emplace_back();
        row.number = onScreen[i].number;
        row.bounds = {0, 0, size->width, size->height};
        row.ownerPid = owners[i].pid;
        row.ownerName = owners[i].name;
        if (!onScreen[i].title.empty())
            row.title = std::move(onScreen[i].title);
    }
    return rows;
}

} // namespace mirrolet::platform::desktop::wayland
