#pragma once

#include "platform/desktop/x11/panel/PanelEvents.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/foundation/Mutex.h"

#include <cstdint>
#include <functional>

namespace mirrolet::platform::desktop::x11 {

/// Waits until the window manager has done its part of a map or an unmap of one window. A window manager that
/// gets the next request too early mistakes it for the last one, and the window stays hidden or shown.
/// Without a window manager there is nothing to wait for. Not to be called from the connection's thread.
class WmStateWaiter {
  public:
    WmStateWaiter(X11Connection& connection, const PanelEvents& events, xcb_window_t window);
    WmStateWaiter(const WmStateWaiter&) = delete;
    WmStateWaiter& operator=(const WmStateWaiter&) = delete;

    /// Returns when the window is mapped and managed, or after half a second, because a window manager that
    /// hangs must not block us for longer.
    void awaitMapped();
    /// Returns when the window manager no longer manages the unmapped window, or after half a second.
    void awaitWithdrawn();

  private:
    struct State {
        bool known = false; ///< False if the window is gone.
        bool mapped = false;
        std::uint32_t managed = 0; ///< The window's WM_STATE: withdrawn, normal or iconic.
    };

    void await(const std::function<bool(const State&)>& wanted);
    [[nodiscard]] State state() const;
    [[nodiscard]] bool managerLives() const;
    void changed();

    X11Connection& connection;
    xcb_window_t window;
    Mutex stateMutex; ///< Held while the server is asked, so that no change in between is missed.
    ConditionVariable change;
    X11Connection::Subscription subscriptions[3];
};

} // namespace mirrolet::platform::desktop::x11
