#pragma once

#include "platform/desktop/x11/panel/PanelEvents.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/windows/PreviousFocus.h"
#include "platform/foundation/Mutex.h"

#include <cstdint>
#include <optional>

namespace mirrolet::platform::desktop::x11 {

/// Takes the focus for one panel and gives it back. Each request carries the time at which the panel asked
/// for the focus. If the user has chosen another window since that time, the server refuses the request.
class PanelFocus {
  public:
    PanelFocus(X11Connection& connection, const PanelEvents& events, PreviousFocus& previousFocus,
               xcb_window_t panel);
    ~PanelFocus();
    PanelFocus(const PanelFocus&) = delete;
    PanelFocus& operator=(const PanelFocus&) = delete;

    /// Asks for the focus and returns at once. The panel gets the focus as soon as it is viewable.
    void take();
    /// Gives the focus back if the panel has it, or has just lost it by being unmapped.
    void giveBack();

  private:
    enum class State { without, awaitingTime, awaitingMap, held };

    void timeKnown(xcb_timestamp_t time);
    void mapped();
    void unmapped();
    void focusLeft(const xcb_focus_out_event_t& event);

    void rememberOwner() MIRROLET_REQUIRES(focusMutex);
    void tryFocus() MIRROLET_REQUIRES(focusMutex);
    void restore() MIRROLET_REQUIRES(focusMutex);
    bool focus(xcb_window_t window, std::uint8_t revertTo, xcb_timestamp_t time);
    /// Returns the window that has the focus; None and PointerRoot are possible. Returns no value if the
    /// server does not answer.
    [[nodiscard]] std::optional<xcb_window_t> focused() const;
    /// Returns true if the panel has the focus, and also if no window has the focus.
    [[nodiscard]] bool focusIsOurs() const;

    X11Connection& connection;
    PreviousFocus& previousFocus;
    xcb_window_t panel;

    Mutex focusMutex; ///< Stays locked while the server is asked.
    State state MIRROLET_GUARDED_BY(focusMutex) = State::without;
    xcb_timestamp_t since MIRROLET_GUARDED_BY(focusMutex) = XCB_CURRENT_TIME;
    /// The window that had the focus before the panel; None and PointerRoot are possible.
    xcb_window_t owner MIRROLET_GUARDED_BY(focusMutex) = XCB_WINDOW_NONE;
    std::uint8_t ownerRevertTo MIRROLET_GUARDED_BY(focusMutex) = XCB_INPUT_FOCUS_POINTER_ROOT;
    /// The window manager's active window before the panel took the focus.
    xcb_window_t active MIRROLET_GUARDED_BY(focusMutex) = XCB_WINDOW_NONE;

    X11Connection::Subscription subscriptions[5];
};

} // namespace mirrolet::platform::desktop::x11
