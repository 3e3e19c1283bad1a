#pragma once

#include "platform/appkit/NSStatusItem.h"

#include <memory>

namespace mirrolet::platform {

constexpr double NSSquareStatusItemLength = -2;

/// The desktop's status bar. Main thread, while the application object and the desktop exist.
class NSStatusBar {
  public:
    static NSStatusBar& system();
    /// Makes an item that is shown until the item is destroyed. The length has no effect, because all icons
    /// are square on this desktop.
    [[nodiscard]] std::shared_ptr<NSStatusItem> statusItem(double withLength);
};

} // namespace mirrolet::platform
