#pragma once

#include <xcb/xcb.h>

#include <atomic>

namespace mirrolet::platform::desktop::x11 {

/// Which application window had the keyboard before a panel of ours took it: that window's application stays
/// the frontmost one while the panel has it. Any thread.
class KeyboardLoan {
  public:
    void begin(xcb_window_t activeWindow) { lender = activeWindow; }
    void end() { lender = XCB_WINDOW_NONE; }
    /// XCB_WINDOW_NONE while no panel has the keyboard.
    [[nodiscard]] xcb_window_t window() const { return lender; }

  private:
    std::atomic<xcb_window_t> lender = XCB_WINDOW_NONE;
};

} // namespace mirrolet::platform::desktop::x11
