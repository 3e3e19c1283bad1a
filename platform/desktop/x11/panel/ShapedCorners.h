#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/foundation/Mutex.h"

namespace mirrolet::platform::desktop::x11 {

class CompositingManager;

/// Makes a window's corners round while no compositing manager runs. Uses the window's shape for this,
/// because the window's alpha has no effect without a compositing manager. To be used by the main thread.
class ShapedCorners {
  public:
    ShapedCorners(X11Connection& connection, CompositingManager& compositingManager, xcb_window_t window);
    ShapedCorners(const ShapedCorners&) = delete;
    ShapedCorners& operator=(const ShapedCorners&) = delete;

    void set(PixelSize size, double radius);

  private:
    void apply() MIRROLET_REQUIRES(cornersMutex);

    X11Connection& connection;
    CompositingManager& compositingManager;
    xcb_window_t window;
    Mutex cornersMutex; ///< Needed because the connection's thread calls apply() too.
    PixelSize size MIRROLET_GUARDED_BY(cornersMutex);
    double radius MIRROLET_GUARDED_BY(cornersMutex) = 0;
    X11Connection::Subscription subscription;
};

} // namespace mirrolet::platform::desktop::x11
