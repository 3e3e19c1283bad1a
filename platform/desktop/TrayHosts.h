#pragma once

#include "platform/combine/AnyCancellable.h"

#include <functional>

namespace mirrolet::platform::desktop {

/// The place where the desktop itself takes status icons (an X11 system tray), beside any that the session
/// bus offers.
class TrayHosts {
  public:
    virtual ~TrayHosts() = default;
    /// Whether there is one now, without asking the server. Any thread.
    [[nodiscard]] virtual bool present() = 0;
    /// Calls on the backend's own thread after each change, until the result is destroyed.
    [[nodiscard]] virtual AnyCancellable subscribe(std::function<void(bool present)> changed) = 0;
};

} // namespace mirrolet::platform::desktop
