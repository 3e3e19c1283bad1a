#include "platform/desktop/wayland/plasma/PlasmaWindowModel.h"

#include <algorithm>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

void PlasmaWindowModel::publish(const PlasmaWindow& window) {
    const MutexLock lock(modelMutex);
    known[window.uuid] = window;
    if (isActive(window)) {
        std::erase(activated, window.uuid);
        activated.push_back(window.uuid);
    }
}

void PlasmaWindowModel::remove(const std::string& uuid) {
    const MutexLock lock(modelMutex);
    std::erase(activated, uuid);
    known.erase(uuid);
}

void PlasmaWindowModel::restack(std::vector<std::string> uuids) {
    const MutexLock lock(modelMutex);
    backToFront = std::move(uuids);
}

std::vector<PlasmaWindow> PlasmaWindowModel::frontToBack() const {
    const MutexLock lock(modelMutex);
    std::vector<PlasmaWindow> windows;
    windows.reserve(known.size());
    for (auto uuid = backToFront.rbegin(); uuid != backToFront.rend(); ++uuid)
        if (const auto found = known.find(*uuid); found != known.end())
            windows.push_back(found->second);
    return windows;
}

std::optional<PlasmaWindow> PlasmaWindowModel::find(WindowNumber number) const {
    const MutexLock lock(modelMutex);
    for (const auto& [uuid, window] : known)
        if (window.number == number)
            return window;
    return std::nullopt;
}

std::optional<PlasmaWindow>
PlasmaWindowModel::active(const std::function<bool(const PlasmaWindow&)>& isOurPanel) const {
    const MutexLock lock(modelMutex);
    bool panelIsActive = false;
    for (auto uuid = activated.rbegin(); uuid != activated.rend(); ++uuid) {
        const auto& window = known.at(*uuid);
        if (isOurPanel(window))
            panelIsActive = panelIsActive || isActive(window);
        else if (isActive(window) || panelIsActive)
            return window;
    }
    return std::nullopt;
}

} // namespace mirrolet::platform::desktop::wayland
