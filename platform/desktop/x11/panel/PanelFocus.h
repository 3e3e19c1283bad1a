#pragma once

#include "platform/desktop/x11/panel/PanelEvents.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/windows/PreviousFocus.h"

#include <cstdint>
#include <mutex>

namespace mirrolet::platform::desktop::x11 {

/// Borrows the keyboard for one panel and gives it back. Every change of focus carries the time at which we
/// wanted it, so that the server itself refuses it once the user has chosen another window after that.
class PanelFocus {
  public:
    PanelFocus(X11Connection& connection, const PanelEvents& events, PreviousFocus& loan, xcb_window_t panel);
    ~PanelFocus();
    PanelFocus(const PanelFocus&) = delete;
    PanelFocus& operator=(const PanelFocus&) = delete;

    /// Returns at once; the focus follows as soon as the panel can be seen.
    void take();
    /// Gives the focus back if the panel has it, or has just lost it by vanishing. Otherwise only ends the
    /// loan.
    void giveBack();

  private:
    enum class State { without, awaitingTime, awaitingMap, held };

    void timeKnown(xcb_timestamp_t time);
    void mapped();
    void unmapped();
    void focusLeft(const xcb_focus_out_event_t& event);

    void rememberOwner();
    void tryFocus();
    void restore();
    bool focus(xcb_window_t window, std::uint8_t revertTo, xcb_timestamp_t time);
    [[nodiscard]] bool focusIsOurs() const;

    X11Connection& connection;
    PreviousFocus& loan;
    xcb_window_t panel;

    std::mutex lock; ///< Guards what follows; the connection's thread and the main thread both come here.
    State state = State::without;
    xcb_timestamp_t since = XCB_CURRENT_TIME;
    xcb_window_t owner =
        XCB_WINDOW_NONE; ///< What had the focus; also None and PointerRoot, as the server says it.
    std::uint8_t ownerRevertTo = XCB_INPUT_FOCUS_POINTER_ROOT;
    xcb_window_t active = XCB_WINDOW_NONE; ///< The window manager's active window of that time.

    X11Connection::Subscription subscriptions[5];
};

} // namespace mirrolet::platform::desktop::x11
