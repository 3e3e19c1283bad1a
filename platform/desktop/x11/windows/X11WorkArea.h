#pragma once

#include "platform/desktop/WorkArea.h"
#include "platform/desktop/x11/server/X11Connection.h"

namespace mirrolet::platform::desktop::x11 {

/// Asks the managed windows which edges they reserve. If there is only one monitor, the window manager is
/// asked as well (`_NET_WORKAREA`), because a Wayland compositor's docks are no X11 windows. With more
/// monitors, `_NET_WORKAREA` is of no use, because it is one rectangle for all monitors together.
class X11WorkArea final : public WorkArea {
  public:
    explicit X11WorkArea(X11Connection& connection) : connection(connection) {}

    /// Takes two round trips to the server for any number of windows.
    [[nodiscard]] ReservedEdges reserved(PixelRect monitor) override;

  private:
    X11Connection& connection;
};

} // namespace mirrolet::platform::desktop::x11
