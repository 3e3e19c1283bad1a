#pragma once

#include "platform/desktop/x11/server/SelectionWatcher.h"

#include <functional>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

/// Tells whether a compositing manager runs. Windows can be translucent only while one runs. A compositing
/// manager may start or stop at any time.
class CompositingManager {
  public:
    /// Must be called before X11Connection::start().
    explicit CompositingManager(X11Connection& connection)
        : watcher(connection, connection.atoms().compositingManager) {}

    /// Returns whether a compositing manager runs. May be called on any thread.
    [[nodiscard]] bool running() const { return watcher.owned(); }
    /// Calls the handler each time that running() may have changed, on the connection's thread.
    [[nodiscard]] X11Connection::Subscription onChange(std::function<void()> changed) {
        return watcher.onChange([changed = std::move(changed)](bool) { changed(); });
    }

  private:
    SelectionWatcher watcher;
};

} // namespace mirrolet::platform::desktop::x11
