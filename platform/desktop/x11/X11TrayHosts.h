#pragma once

#include "platform/desktop/TrayHosts.h"
#include "platform/desktop/x11/server/SelectionWatcher.h"

namespace mirrolet::platform::desktop::x11 {

/// The system tray of the screen, which is whoever owns its selection.
class X11TrayHosts final : public TrayHosts {
  public:
    /// Made before the connection starts. The connection outlives the subscriptions.
    explicit X11TrayHosts(X11Connection& connection) : watcher(connection, connection.atoms().systemTray) {}

    bool present() override { return watcher.owned(); }
    AnyCancellable subscribe(std::function<void(bool present)> changed) override;

  private:
    SelectionWatcher watcher;
};

} // namespace mirrolet::platform::desktop::x11
