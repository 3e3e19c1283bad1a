#pragma once

#include "platform/desktop/Pixels.h"

namespace mirrolet::platform::desktop {

/// The widths, in device pixels, of the strips that docks reserve at the four edges of a monitor.
struct ReservedEdges {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    friend bool operator==(const ReservedEdges&, const ReservedEdges&) = default;
};

/// Tells how much of a monitor docks reserve for themselves.
class WorkArea {
  public:
    virtual ~WorkArea() = default;
    /// Returns the strips that are reserved now. `monitor` is the rectangle of a monitor in the root window.
    /// Waits for the server. Must be called on the main thread.
    [[nodiscard]] virtual ReservedEdges reserved(PixelRect monitor) = 0;
};

} // namespace mirrolet::platform::desktop
