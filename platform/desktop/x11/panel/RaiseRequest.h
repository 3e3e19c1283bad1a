#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <atomic>

namespace mirrolet::platform::desktop::x11 {

/// Asks the window manager to put one managed panel in front of the other windows, without the focus.
///
/// The panel is shown without a claim to the focus, so some window managers map it below the focused window,
/// and refuse an ordinary raise of a window that the user has not used later than the focused one.
class RaiseRequest {
  public:
    RaiseRequest(X11Connection& connection, xcb_window_t panel);
    RaiseRequest(const RaiseRequest&) = delete;
    RaiseRequest& operator=(const RaiseRequest&) = delete;

    /// The panel must be mapped. Returns at once; the request follows when the server's time is known.
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
