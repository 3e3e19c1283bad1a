#pragma once

#include <xcb/xcb.h>

#include <atomic>
#include <cstdint>

namespace mirrolet::platform::desktop::x11 {

/// The application window that had the focus before one of this program's panels took the focus. While a
/// panel has the focus, that window's application is still the frontmost one. Any thread.
class PreviousFocus {
  public:
    /// Stores the window that had the focus and the panel that takes the focus. Replaces the entry of another
    /// of this program's panels, if that panel had the focus until now.
    void begin(xcb_window_t focusedBefore, xcb_window_t panel) {
        state = std::uint64_t{focusedBefore} << 32U | panel;
    }
    /// Clears this panel's entry. Does nothing if another panel has replaced the entry meanwhile.
    void end(xcb_window_t panel) {
        auto current = state.load();
        while ((current & 0xffffffffU) == panel && !state.compare_exchange_weak(current, 0)) {
        }
    }
    /// Returns the application window, or XCB_WINDOW_NONE while no panel has the focus.
    [[nodiscard]] xcb_window_t window() const { return static_cast<xcb_window_t>(state >> 32U); }

  private:
    std::atomic<std::uint64_t> state = 0; ///< The window and the panel, as one value.
};

} // namespace mirrolet::platform::desktop::x11
