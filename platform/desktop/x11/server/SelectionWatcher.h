#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <atomic>
#include <functional>

namespace mirrolet::platform::desktop::x11 {

/// Watches whether a selection of the screen has an owner. A service of the desktop (compositing manager,
/// tray) owns its selection while it runs. XFixes tells of an owner that crashed, too.
class SelectionWatcher {
  public:
    /// Waits for the server. Made before the connection starts, so that no change is missed.
    SelectionWatcher(X11Connection& connection, xcb_atom_t selection);
    SelectionWatcher(const SelectionWatcher&) = delete;
    SelectionWatcher& operator=(const SelectionWatcher&) = delete;

    /// As far as events told. Any thread.
    [[nodiscard]] bool owned() const { return isOwned; }
    /// Calls the handler after each change of owner, on the connection's thread. The watcher may end before
    /// the subscription does.
    [[nodiscard]] X11Connection::Subscription onChange(std::function<void(bool owned)> changed);

  private:
    X11Connection& connection;
    const xcb_atom_t selection;
    std::atomic<bool> isOwned = false;
    X11Connection::Subscription subscription;
};

} // namespace mirrolet::platform::desktop::x11
