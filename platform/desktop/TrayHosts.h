#pragma once

#include "platform/combine/AnyCancellable.h"

#include <functional>

namespace mirrolet::platform::desktop {

/// Tells whether the desktop has a tray host, which is a program that shows status icons in an X11 system
/// tray. Tray hosts on the session bus do not count.
class TrayHosts {
  public:
    virtual ~TrayHosts() = default;
    /// Returns whether a tray host runs now, without asking the server. May be called on any thread.
    [[nodiscard]] virtual bool present() = 0;
    /// Calls `changed` each time that a tray host has appeared or disappeared, on the backend's own thread.
    /// The calls end when the returned object is destroyed.
    [[nodiscard]] virtual AnyCancellable subscribe(std::function<void(bool present)> changed) = 0;
};

} // namespace mirrolet::platform::desktop
