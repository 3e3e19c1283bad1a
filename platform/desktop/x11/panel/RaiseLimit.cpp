#include "platform/desktop/x11/panel/RaiseLimit.h"

#include <algorithm>

namespace mirrolet::platform::desktop::x11 {

std::optional<WindowNumber> RaiseLimit::topmostAllowed(const std::vector<WindowNumber>& windows,
                                                       Clock::time_point now) {
    const auto found = std::find_if(windows.rbegin(), windows.rend(),
                                    [this, now](WindowNumber window) { return mayRaiseAbove(window, now); });
    return found == windows.rend() ? std::nullopt : std::optional(*found);
}

bool RaiseLimit::mayRaiseAbove(WindowNumber window, Clock::time_point now) {
    auto& [began, count] = raises[window];
    if (now - began > std::chrono::seconds(1)) {
        began = now;
        count = 0;
    }
    return ++count <= mostRaisesASecond;
}

} // namespace mirrolet::platform::desktop::x11
