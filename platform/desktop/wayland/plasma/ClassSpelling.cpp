#include "platform/desktop/wayland/plasma/ClassSpelling.h"

#include "platform/foundation/AsciiLowercase.h"

#include <set>

namespace mirrolet::platform::desktop::wayland {

void ClassSpelling::learn(const std::vector<PlasmaWindow>& windows) {
    std::vector<const PlasmaWindow*> unknown;
    {
        const MutexLock lock(spelledMutex);
        for (const auto& window : windows)
            if (!isKnown(window))
                unknown.push_back(&window);
    }
    if (unknown.empty())
        return;
    std::map<std::string, std::string> names; // By the name in lower case.
    for (const auto& row : x11Windows.onScreenWindows().value_or(std::vector<WindowRow>()))
        names.try_emplace(asciiLowercase(row.ownerName), row.ownerName);
    const MutexLock lock(spelledMutex);
    for (const auto* window : unknown) {
        const auto name = names.find(asciiLowercase(window->applicationId));
        spelled[window->number] = name == names.end() ? window->applicationId : name->second;
    }
}

std::string ClassSpelling::of(const PlasmaWindow& window) const {
    const MutexLock lock(spelledMutex);
    return isKnown(window) ? spelled.at(window.number) : window.applicationId;
}

/// Returns whether the spelling of the window's present application ID is known. A client may change the
/// application ID.
bool ClassSpelling::isKnown(const PlasmaWindow& window) const {
    const auto known = spelled.find(window.number);
    return known != spelled.end() && asciiLowercase(known->second) == asciiLowercase(window.applicationId);
}

void ClassSpelling::keepOnly(const std::vector<PlasmaWindow>& onScreen) {
    std::set<WindowNumber> kept;
    for (const auto& window : onScreen)
        kept.insert(window.number);
    const MutexLock lock(spelledMutex);
    std::erase_if(spelled, [&kept](const auto& each) { return !kept.contains(each.first); });
}

} // namespace mirrolet::platform::desktop::wayland
