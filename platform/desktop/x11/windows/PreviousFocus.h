#pragma once

#include <xcb/xcb.h>

#include <atomic>
#include <cstdint>

namespace mirrolet::platform::desktop::x11 {

/// Remembers which application window had the focus before one of this program's panels took the focus. While
/// the panel has the focus, that window's application still counts as the frontmost one. May be used by any
/// thread.
class PreviousFocus {
  public:
    /// Stores the window that had the focus and the panel that takes the focus. Overwrites the values of
    /// another panel that had the focus until now.
    void begin(xcb_window_t focusedBefore, xcb_window_t panel) {
        state = std::uint64_t{focusedBefore} << 32U | panel;
    }
    /// Clears the stored values. Does nothing if they have been overwritten for another panel.
    void end(xcb_window_t panel) {
        auto current = state.load();
        while ((current & 0xffffffffU) == panel && !state.compare_exchange_weak(current, 0)) {
        }
    }
    /// Returns the application window, or XCB_WINDOW_NONE while no panel has the focus.
    [[nodiscard]] xcb_window_t window() const { return static_cast<xcb_window_t>(state >> 32U); }

  private:
    std::atomic<std::uint64_t> state = 0; ///< The window in the upper half, the panel in the lower half.
};

} // namespace mirrolet::platform::desktop::x11
