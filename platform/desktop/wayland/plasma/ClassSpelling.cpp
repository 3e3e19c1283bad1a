#include "platform/desktop/wayland/plasma/ClassSpelling.h"

#include "platform/foundation/AsciiLowercase.h"

#include <set>

namespace mirrolet::platform::desktop::wayland {

std::string ClassSpelling::of(const PlasmaWindow& window) {
    const auto isSame = [&window](const std::string& text) {
        return asciiLowercase(text) == asciiLowercase(window.applicationId);
    };
    {
        const MutexLock lock(spelledMutex);
        const auto known = spelled.find(window.number);
        if (known != spelled.end() && isSame(known->second)) // A client may change the application ID.
            return known->second;
    }
    const auto text = lookUp(window.applicationId);
    const MutexLock lock(spelledMutex);
    return spelled[window.number] = text;
}

void ClassSpelling::keepOnly(const std::vector<PlasmaWindow>& onScreen) {
    std::set<WindowNumber> kept;
    for (const auto& window : onScreen)
        kept.insert(window.number);
    const MutexLock lock(spelledMutex);
    std::erase_if(spelled, [&kept](const auto& each) { return !kept.contains(each.first); });
}

std::string ClassSpelling::lookUp(const std::string& applicationId) {
    const auto rows = x11Windows.onScreenWindows();
    for (const auto& row : rows.value_or(std::vector<WindowRow>()))
        if (asciiLowercase(row.ownerName) == asciiLowercase(applicationId))
            return row.ownerName;
    return applicationId;
}

} // namespace mirrolet::platform::desktop::wayland
