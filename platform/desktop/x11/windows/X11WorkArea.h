#pragma once

#include "platform/desktop/WorkArea.h"
#include "platform/desktop/x11/server/X11Connection.h"

namespace mirrolet::platform::desktop::x11 {

/// Asks the managed windows themselves what they keep free. The window manager's own sum, `_NET_WORKAREA`, is
/// one rectangle for all monitors together.
class X11WorkArea final : public WorkArea {
  public:
    explicit X11WorkArea(X11Connection& connection) : connection(connection) {}

    /// Two round trips, however many windows there are.
    [[nodiscard]] ReservedEdges reserved(PixelRect monitor) override;

  private:
    X11Connection& connection;
};

} // namespace mirrolet::platform::desktop::x11
