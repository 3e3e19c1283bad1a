#pragma once

#include "platform/appkit/NSStatusItem.h"

#include <memory>

namespace mirrolet::platform {

constexpr double NSSquareStatusItemLength = -2;

/// The desktop's status bar. Main thread. Used only while the NSApplication and the backend exist.
class NSStatusBar {
  public:
    static NSStatusBar& system();
    /// Makes an item, which is shown until it is destroyed. The length has no effect, because all icons are
    /// square on this desktop.
    [[nodiscard]] std::shared_ptr<NSStatusItem> statusItem(double withLength);
};

} // namespace mirrolet::platform
