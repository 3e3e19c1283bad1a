#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/x11/server/X11Connection.h"

#include <cstdint>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Tells the window manager, task lists and the compositing manager about one panel. May be used by any
/// thread.
class PanelProperties {
  public:
    PanelProperties(X11Connection& connection, xcb_window_t panel, PanelStacking stacking)
        : connection(connection), panel(panel), stacking(stacking) {}

    /// Writes the properties that are read once, at the map. The server has them when this returns, so they
    /// take effect before a map on another connection. `modal` tells that the panel asks the user something.
    void writeBeforeMap(bool modal) const;
    /// Sends the requests that some window managers take only as messages, and forget with every unmap. A
    /// managed panel must be mapped. Does nothing for a floating panel.
    void requestAfterMap() const;

  private:
    void writeStates(std::vector<std::uint32_t> states) const;
    void refuseFocus(const std::vector<std::uint32_t>& hints,
                     const std::vector<std::uint32_t>& protocols) const;
    void sendToRoot(xcb_atom_t type, std::uint32_t first, std::uint32_t second, std::uint32_t third) const;

    X11Connection& connection;
    xcb_window_t panel;
    PanelStacking stacking;
};

} // namespace mirrolet::platform::desktop::x11
