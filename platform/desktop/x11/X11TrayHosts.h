#pragma once

#include "platform/desktop/TrayHosts.h"
#include "platform/desktop/x11/server/SelectionWatcher.h"

namespace mirrolet::platform::desktop::x11 {

/// Tells whether a system tray runs. A system tray owns the selection _NET_SYSTEM_TRAY_S<screen> while it
/// runs.
class X11TrayHosts final : public TrayHosts {
  public:
    /// Must be called before X11Connection::start(). The connection must outlive all subscriptions.
    explicit X11TrayHosts(X11Connection& connection) : watcher(connection, connection.atoms().systemTray) {}

    bool present() override { return watcher.owned(); }
    AnyCancellable subscribe(std::function<void(bool present)> changed) override;

  private:
    SelectionWatcher watcher;
};

} // namespace mirrolet::platform::desktop::x11
