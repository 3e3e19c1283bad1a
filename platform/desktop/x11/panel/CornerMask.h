#pragma once

#include "platform/desktop/Pixels.h"
#include "platform/desktop/x11/server/X11Connection.h"

#include <mutex>

namespace mirrolet::platform::desktop::x11 {

class CompositingManager;

/// Cuts a window's corners round by its shape as long as no compositing manager runs, for then its alpha
/// counts for nothing. Main thread.
class CornerMask {
  public:
    CornerMask(X11Connection& connection, CompositingManager& compositingManager, xcb_window_t window);
    CornerMask(const CornerMask&) = delete;
    CornerMask& operator=(const CornerMask&) = delete;

    void set(PixelSize size, double radius);

  private:
    void apply();

    X11Connection& connection;
    CompositingManager& compositingManager;
    xcb_window_t window;
    std::mutex lock; ///< Guards size and radius: the connection's thread follows the compositing manager.
    PixelSize size;
    double radius = 0;
    X11Connection::Subscription subscription;
};

} // namespace mirrolet::platform::desktop::x11
