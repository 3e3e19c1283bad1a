#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <atomic>
#include <functional>

namespace mirrolet::platform::desktop::x11 {

/// Whether a compositing manager runs, that is, whether windows can be translucent. It may start and stop at
/// any time.
class CompositingManager {
  public:
    explicit CompositingManager(X11Connection& connection);
    CompositingManager(const CompositingManager&) = delete;
    CompositingManager& operator=(const CompositingManager&) = delete;

    /// Any thread.
    [[nodiscard]] bool running() const { return isRunning; }
    /// Called after running() may have changed, on the connection's thread, until the subscription is
    /// destroyed.
    [[nodiscard]] X11Connection::Subscription onChange(std::function<void()> changed);

  private:
    [[nodiscard]] X11Connection::Subscription subscribe(std::function<void(xcb_window_t owner)> changed);

    X11Connection& connection;
    std::atomic<bool> isRunning = false;
    X11Connection::Subscription subscription;
};

} // namespace mirrolet::platform::desktop::x11
