#pragma once

#include "platform/desktop/WindowList.h"

#include <chrono>
#include <map>
#include <optional>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Limits how often the panels are raised above one and the same window. Without a limit, a window that
/// raises itself after each raise of the panels would keep both programs busy for ever.
class RaiseLimit {
  public:
    using Clock = std::chrono::steady_clock;
    /// The limit is higher than the rate at which anybody switches windows.
    static constexpr int mostRaisesASecond = 8;

    /// Returns the topmost window that the panels may be raised above now. `windows` is ordered bottom to
    /// top. Counts the raise for that window and for those above it.
    std::optional<WindowNumber> topmostAllowed(const std::vector<WindowNumber>& windows,
                                               Clock::time_point now);
    void forget(WindowNumber window) { raises.erase(window); }
    void clear() { raises.clear(); }

  private:
    /// Counts the raises above one window within a second.
    struct Raises {
        Clock::time_point began;
        int count = 0;
    };

    bool mayRaiseAbove(WindowNumber window, Clock::time_point now);

    std::map<WindowNumber, Raises> raises;
};

} // namespace mirrolet::platform::desktop::x11
