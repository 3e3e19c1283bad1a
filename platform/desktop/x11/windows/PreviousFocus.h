#pragma once

#include <xcb/xcb.h>

#include <atomic>
#include <cstdint>

namespace mirrolet::platform::desktop::x11 {

/// Which application window had the keyboard before a panel of ours took it: that window's application stays
/// the frontmost one while the panel has it. Any thread.
class PreviousFocus {
  public:
    /// A panel that takes the keyboard from another panel takes over its loan.
    void begin(xcb_window_t activeWindow, xcb_window_t panel) {
        state = std::uint64_t{activeWindow} << 32U | panel;
    }
    /// Without effect if another panel has taken over meanwhile.
    void end(xcb_window_t panel) {
        auto current = state.load();
        while ((current & 0xffffffffU) == panel && !state.compare_exchange_weak(current, 0)) {
        }
    }
    /// XCB_WINDOW_NONE while no panel has the keyboard.
    [[nodiscard]] xcb_window_t window() const { return static_cast<xcb_window_t>(state >> 32U); }

  private:
    std::atomic<std::uint64_t> state = 0; ///< Lending window and borrowing panel, as one value.
};

} // namespace mirrolet::platform::desktop::x11
