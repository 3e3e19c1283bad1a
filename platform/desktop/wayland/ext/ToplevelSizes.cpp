#include "platform/desktop/wayland/ext/ToplevelSizes.h"

#include <algorithm>

namespace mirrolet::platform::desktop::wayland {

namespace {

using std::chrono::seconds;

/// A compositor answers at once. A measurement that takes longer is given up and begun again.
constexpr seconds longestMeasurement{5};
/// The title of a call may change every second.
constexpr seconds shortestPause{2};
/// A window can be resized without any change of its description.
constexpr seconds longestPause{60};
constexpr seconds pauseAfterFailure{10};

} // namespace

bool ToplevelSizes::isDue(const Known& known, const Toplevel& window, TimePoint now) {
    const auto passed = now - known.since;
    if (known.isMeasuring)
        return passed >= longestMeasurement;
    if (known.asked != window)
        return passed >= shortestPause;
    return passed >= (known.size ? longestPause : pauseAfterFailure);
}

std::vector<WindowNumber> ToplevelSizes::due(const std::vector<Toplevel>& candidates, TimePoint now) {
    const MutexLock lock(sizesMutex);
    std::erase_if(sizes, [&](const auto& known) {
        return std::ranges::find(candidates, known.first, &Toplevel::number) == candidates.end();
    });
    std::vector<WindowNumber> windows;
    for (const auto& window : candidates) {
        const auto [at, added] = sizes.try_emplace(window.number);
        auto& known = at->second;
        if (!added && !isDue(known, window, now))
            continue;
        known.asked = window;
        known.since = now;
        known.isMeasuring = true;
        windows.push_back(window.number);
    }
    return windows;
}

void ToplevelSizes::measured(WindowNumber number, std::optional<PixelSize> size, TimePoint now) {
    const MutexLock lock(sizesMutex);
    const auto found = sizes.find(number);
    if (found == sizes.end())
        return;
    auto& known = found->second;
    known.isMeasuring = false;
    known.since = now;
    if (size)
        known.size = size;
}

std::optional<PixelSize> ToplevelSizes::sizeOf(WindowNumber number) const {
    const MutexLock lock(sizesMutex);
    const auto found = sizes.find(number);
    return found == sizes.end() ? std::nullopt : found->second.size;
}

} // namespace mirrolet::platform::desktop::wayland
