#pragma once

#include "platform/desktop/x11/panel/PanelEvents.h"
#include "platform/desktop/x11/server/X11Connection.h"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>

namespace mirrolet::platform::desktop::x11 {

/// Waits for the window manager to have done its part of a map or an unmap of one window. One that is asked
/// for the next before it has done the last takes one for the other, and the window stays away or on the
/// screen. Without a window manager there is nothing to wait for. Not to be called from the connection's
/// thread.
class WmStateWaiter {
  public:
    WmStateWaiter(X11Connection& connection, const PanelEvents& events, xcb_window_t window);
    WmStateWaiter(const WmStateWaiter&) = delete;
    WmStateWaiter& operator=(const WmStateWaiter&) = delete;

    /// Returns when the window is mapped and managed; half a second later also if it never is, because a
    /// window manager that hangs must not hold us up for longer.
    void awaitMapped();
    /// The same for a window that was unmapped: until the window manager has let go of it.
    void awaitWithdrawn();

  private:
    struct State {
        bool known = false; ///< Not if the window is gone.
        bool mapped = false;
        std::uint32_t managed = 0; ///< The manager's word: withdrawn, normal or iconic.
    };

    void await(const std::function<bool(const State&)>& wanted);
    [[nodiscard]] State state() const;
    [[nodiscard]] bool managerLives() const;
    void changed();

    X11Connection& connection;
    xcb_window_t window;
    std::mutex lock; ///< Held while the server is asked: a change that comes meanwhile is not missed.
    std::condition_variable change;
    X11Connection::Subscription subscriptions[3];
};

} // namespace mirrolet::platform::desktop::x11
