#pragma once

#include "platform/desktop/WindowList.h"

#include <chrono>
#include <map>
#include <optional>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Limits how often the panels are raised above one and the same window. Without a limit, a window that
/// answers each raise with its own would keep both programs busy for ever.
class RaiseLimit {
  public:
    using Clock = std::chrono::steady_clock;
    /// More often than anybody switches windows.
    static constexpr int mostRaisesASecond = 8;

    /// The topmost of these windows (bottom to top) that the panels may be raised above now. The raise counts
    /// against that window and those above it.
    std::optional<WindowNumber> topmostAllowed(const std::vector<WindowNumber>& windows,
                                               Clock::time_point now);
    void forget(WindowNumber window) { raises.erase(window); }
    void clear() { raises.clear(); }

  private:
    /// The raises above one window within a second.
    struct Raises {
        Clock::time_point began;
        int count = 0;
    };

    bool mayRaiseAbove(WindowNumber window, Clock::time_point now);

    std::map<WindowNumber, Raises> raises;
};

} // namespace mirrolet::platform::desktop::x11
