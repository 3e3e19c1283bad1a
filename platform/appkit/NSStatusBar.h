#pragma once

#include "platform/appkit/NSStatusItem.h"

#include <memory>

namespace mirrolet::platform {

constexpr double NSSquareStatusItemLength = -2;

/// The desktop's status bar. Main thread, with the application object and the desktop there.
class NSStatusBar {
  public:
    static NSStatusBar& system();
    /// An item that is shown until it is destroyed. The length has no effect: on this desktop all icons are
    /// square.
    [[nodiscard]] std::shared_ptr<NSStatusItem> statusItem(double withLength);
};

} // namespace mirrolet::platform
