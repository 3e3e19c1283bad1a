#pragma once

#include "platform/desktop/TrayHosts.h"

namespace mirrolet::platform::desktop::x11 {

class X11Connection;

/// The system tray of the screen: whoever owns its selection. Watched through XFixes, so that a tray that
/// crashes is noticed as well as one that starts.
class X11TrayHosts final : public TrayHosts {
  public:
    /// The connection outlives this and its subscriptions.
    explicit X11TrayHosts(X11Connection& connection);

    bool present() override;
    AnyCancellable subscribe(std::function<void(bool present)> changed) override;

  private:
    X11Connection& connection;
};

} // namespace mirrolet::platform::desktop::x11
