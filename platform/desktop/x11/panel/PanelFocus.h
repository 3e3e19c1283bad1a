#pragma once

#include "platform/desktop/x11/panel/PanelEvents.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/windows/PreviousFocus.h"

#include <cstdint>
#include <mutex>

namespace mirrolet::platform::desktop::x11 {

/// Takes the focus for one panel and gives it back. Each change of the focus carries the time at which the
/// panel asked for it, so the server itself refuses the change once the user has chosen another window after
/// that time.
class PanelFocus {
  public:
    PanelFocus(X11Connection& connection, const PanelEvents& events, PreviousFocus& previousFocus,
               xcb_window_t panel);
    ~PanelFocus();
    PanelFocus(const PanelFocus&) = delete;
    PanelFocus& operator=(const PanelFocus&) = delete;

    /// Returns at once; the focus follows as soon as the panel is viewable.
    void take();
    /// Gives the focus back if the panel has it, or has just lost it by being unmapped.
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
    PreviousFocus& previousFocus;
    xcb_window_t panel;

    std::mutex lock; ///< Guards what follows; the connection's thread and the main thread both come here.
    State state = State::without;
    xcb_timestamp_t since = XCB_CURRENT_TIME;
    xcb_window_t owner = XCB_WINDOW_NONE; ///< What had the focus; None and PointerRoot are possible.
    std::uint8_t ownerRevertTo = XCB_INPUT_FOCUS_POINTER_ROOT;
    xcb_window_t active = XCB_WINDOW_NONE; ///< The window manager's active window of that time.

    X11Connection::Subscription subscriptions[5];
};

} // namespace mirrolet::platform::desktop::x11
