#pragma once

#include "platform/desktop/Pixels.h"

namespace mirrolet::platform::desktop {

/// How far what belongs to the desktop reaches into a monitor, from each of its edges. Device pixels.
struct ReservedEdges {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    friend bool operator==(const ReservedEdges&, const ReservedEdges&) = default;
};

/// The room that docks and the desktop's own panels keep for themselves.
class WorkArea {
  public:
    virtual ~WorkArea() = default;
    /// Of a monitor at this place of the root window, as it is now. Main thread; waits for the server.
    [[nodiscard]] virtual ReservedEdges reserved(PixelRect monitor) = 0;
};

} // namespace mirrolet::platform::desktop
