#pragma once

#include "platform/desktop/x11/panel/PanelEvents.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/foundation/Mutex.h"

#include <cstdint>
#include <functional>

namespace mirrolet::platform::desktop::x11 {

/// Waits until the window manager has handled a map or an unmap of one window. If the opposite request came
/// before that, the window manager could mix up the two requests, and the window would stay hidden or shown.
/// Without a window manager, only the server's own map or unmap is waited for. Must not be called on the
/// connection's thread.
class WmStateWaiter {
  public:
    WmStateWaiter(X11Connection& connection, const PanelEvents& events, xcb_window_t window);
    WmStateWaiter(const WmStateWaiter&) = delete;
    WmStateWaiter& operator=(const WmStateWaiter&) = delete;

    /// Returns when the window manager has handled the map. Returns after half a second at the latest,
    /// because a hanging window manager must not block the caller for longer.
    void awaitMapped();
    /// Returns when the window manager has handled the unmap, or after half a second at the latest.
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
    Mutex stateMutex; ///< Stays locked while the server is asked, so that no change is missed.
    ConditionVariable change;
    X11Connection::Subscription subscriptions[3];
};

} // namespace mirrolet::platform::desktop::x11
