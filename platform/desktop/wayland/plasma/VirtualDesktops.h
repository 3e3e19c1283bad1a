#pragma once

#include "platform/desktop/wayland/session/WaylandConnection.h"
#include "platform/foundation/Mutex.h"

#include <map>
#include <memory>
#include <string>

struct org_kde_plasma_virtual_desktop;
struct org_kde_plasma_virtual_desktop_management;

namespace mirrolet::platform::desktop::wayland {

/// Follows which virtual desktop is the current one. The compositor reports each change, so current() sends
/// no request.
class VirtualDesktops {
  public:
    /// To be made before the connection starts.
    explicit VirtualDesktops(WaylandConnection& connection);
    /// To be destroyed after the connection has ended.
    ~VirtualDesktops();
    VirtualDesktops(const VirtualDesktops&) = delete;
    VirtualDesktops& operator=(const VirtualDesktops&) = delete;

    /// Returns the current desktop's identifier; empty if there are no virtual desktops. Any thread.
    [[nodiscard]] std::string current() const;

  private:
    struct Desktop;
    void add(const char* identifier);
    void remove(const char* identifier);

    org_kde_plasma_virtual_desktop_management* const management;
    std::map<std::string, std::unique_ptr<Desktop>> desktops; ///< Used by the connection's thread only.
    mutable Mutex currentMutex;
    std::string currentDesktop MIRROLET_GUARDED_BY(currentMutex);
};

} // namespace mirrolet::platform::desktop::wayland
