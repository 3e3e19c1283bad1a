#pragma once

#include "platform/combine/AnyCancellable.h"

#include <functional>

namespace mirrolet::platform::desktop {

/// The place where the desktop itself takes status icons (an X11 system tray), beside any that the session
/// bus offers.
class TrayHosts {
  public:
    virtual ~TrayHosts() = default;
    /// Returns whether there is a tray host now, without asking the server. Any thread.
    [[nodiscard]] virtual bool present() = 0;
    /// Calls `changed` after each change, on the backend's own thread, until the result is destroyed.
    [[nodiscard]] virtual AnyCancellable subscribe(std::function<void(bool present)> changed) = 0;
};

} // namespace mirrolet::platform::desktop
