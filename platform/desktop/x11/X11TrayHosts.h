#pragma once

#include "platform/desktop/TrayHosts.h"
#include "platform/desktop/x11/server/SelectionWatcher.h"

namespace mirrolet::platform::desktop::x11 {

/// The system tray of the screen. A tray is present while the tray's selection has an owner.
class X11TrayHosts final : public TrayHosts {
  public:
    /// Must be made before the connection starts. The connection must outlive the subscriptions.
    explicit X11TrayHosts(X11Connection& connection) : watcher(connection, connection.atoms().systemTray) {}

    bool present() override { return watcher.owned(); }
    AnyCancellable subscribe(std::function<void(bool present)> changed) override;

  private:
    SelectionWatcher watcher;
};

} // namespace mirrolet::platform::desktop::x11
