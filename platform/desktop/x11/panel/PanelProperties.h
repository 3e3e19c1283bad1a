#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/x11/server/X11Connection.h"

#include <cstdint>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// What a window manager, task list or compositor is told about one panel. Any thread.
class PanelProperties {
  public:
    PanelProperties(X11Connection& connection, xcb_window_t panel, PanelStacking stacking)
        : connection(connection), panel(panel), stacking(stacking) {}

    /// Writes what is read once, at the map; it is with the server when this returns, so that a map over
    /// another connection comes after it. `modal`: a panel that asks something.
    void writeBeforeMap(bool modal) const;
    /// Asks the window manager for what some take only by message, and forget with every unmap. Only for a
    /// managed panel that is mapped; otherwise nothing.
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
