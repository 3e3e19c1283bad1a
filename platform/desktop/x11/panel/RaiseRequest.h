#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <atomic>

namespace mirrolet::platform::desktop::x11 {

/// Asks the window manager to put one managed panel in front of the other windows, without the focus.
///
/// The panel is mapped without asking for the focus, so some window managers put it below the focused window.
/// They also refuse an ordinary raise, because the user has used the focused window later than the panel.
class RaiseRequest {
  public:
    RaiseRequest(X11Connection& connection, xcb_window_t panel);
    RaiseRequest(const RaiseRequest&) = delete;
    RaiseRequest& operator=(const RaiseRequest&) = delete;

    /// Returns at once. The request is sent when the server's time is known. The panel must be mapped.
    void send();

  private:
    void timeKnown(xcb_timestamp_t time);
    [[nodiscard]] bool managerTakesRestackMessages() const;
    void sendRestackMessage() const;
    void raiseAsJustUsed(xcb_timestamp_t time) const;

    X11Connection& connection;
    xcb_window_t panel;
    std::atomic<bool> pending = false;
    X11Connection::Subscription subscription;
};

} // namespace mirrolet::platform::desktop::x11
