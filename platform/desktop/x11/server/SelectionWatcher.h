#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <atomic>
#include <functional>

namespace mirrolet::platform::desktop::x11 {

/// Watches whether a selection of the screen has an owner. A service of the desktop, such as the compositing
/// manager or the tray, owns its selection while it runs. XFIXES also reports an owner that has crashed.
class SelectionWatcher {
  public:
    /// Asks for the present owner and waits for the reply. Must be called before X11Connection::start(), so
    /// that no change is missed.
    SelectionWatcher(X11Connection& connection, xcb_atom_t selection);
    SelectionWatcher(const SelectionWatcher&) = delete;
    SelectionWatcher& operator=(const SelectionWatcher&) = delete;

    /// Returns whether the selection has an owner, according to the events so far. May be called on any
    /// thread.
    [[nodiscard]] bool owned() const { return isOwned; }
    /// Calls the handler after each change of owner, on the connection's thread. The subscription may outlive
    /// the watcher.
    [[nodiscard]] X11Connection::Subscription onChange(std::function<void(bool owned)> changed);

  private:
    X11Connection& connection;
    const xcb_atom_t selection;
    std::atomic<bool> isOwned = false;
    X11Connection::Subscription subscription;
};

} // namespace mirrolet::platform::desktop::x11
