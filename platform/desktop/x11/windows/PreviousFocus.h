#pragma once

#include <xcb/xcb.h>

#include <atomic>
#include <cstdint>

namespace mirrolet::platform::desktop::x11 {

/// The application window that had the focus before one of our panels took it. While a panel has the focus,
/// that window's application is still the frontmost one. Any thread.
class PreviousFocus {
  public:
    /// A panel that takes the focus from another of our panels replaces that panel's entry.
    void begin(xcb_window_t focusedBefore, xcb_window_t panel) {
        state = std::uint64_t{focusedBefore} << 32U | panel;
    }
    /// Clears the entry, unless another panel has replaced it meanwhile.
    void end(xcb_window_t panel) {
        auto current = state.load();
        while ((current & 0xffffffffU) == panel && !state.compare_exchange_weak(current, 0)) {
        }
    }
    /// XCB_WINDOW_NONE while no panel has the focus.
    [[nodiscard]] xcb_window_t window() const { return static_cast<xcb_window_t>(state >> 32U); }

  private:
    std::atomic<std::uint64_t> state = 0; ///< The window and the panel, as one value.
};

} // namespace mirrolet::platform::desktop::x11
