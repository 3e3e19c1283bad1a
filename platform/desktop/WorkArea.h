#pragma once

#include "platform/desktop/Pixels.h"

namespace mirrolet::platform::desktop {

/// The width of the strip at each edge of a monitor that the desktop keeps for itself. In device pixels.
struct ReservedEdges {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    friend bool operator==(const ReservedEdges&, const ReservedEdges&) = default;
};

/// Tells which room docks and the desktop's own panels keep for themselves.
class WorkArea {
  public:
    virtual ~WorkArea() = default;
    /// Returns the edges that are reserved now on a monitor at this place of the root window. Main thread;
    /// waits for the server.
    [[nodiscard]] virtual ReservedEdges reserved(PixelRect monitor) = 0;
};

} // namespace mirrolet::platform::desktop
