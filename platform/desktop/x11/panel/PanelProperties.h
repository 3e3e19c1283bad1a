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

    /// Writes the properties that window managers read only when the panel is mapped. Waits until the server
    /// has the properties, because Qt maps the panel on another connection, whose request could otherwise
    /// come first. `modal` tells that the panel asks the user something.
    void writeBeforeMap(bool modal) const;
    /// Asks the window manager again to show the panel on all workspaces and in no task list. Some window
    /// managers accept this only as messages, and only for a mapped panel. Must be called after each map,
    /// because window managers forget the requests at an unmap. Does nothing for a floating panel, which is
    /// not managed.
    void requestAfterMap() const;

  private:
    void writeStates(std::vector<std::uint32_t> states) const;
    void writeUserTime() const;
    void refuseFocus(const std::vector<std::uint32_t>& hints,
                     const std::vector<std::uint32_t>& protocols) const;
    void addStates(xcb_atom_t first, xcb_atom_t second) const;

    X11Connection& connection;
    xcb_window_t panel;
    PanelStacking stacking;
};

} // namespace mirrolet::platform::desktop::x11
