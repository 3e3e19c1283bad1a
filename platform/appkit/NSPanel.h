#pragma once

#include "platform/appkit/NSWindow.h"

namespace mirrolet::platform {

/// A window that never activates the program.
class NSPanel : public NSWindow {
  public:
    using NSWindow::NSWindow;

    // Kept for those who set it, and without effect on this desktop, where the level decides.
    bool isFloatingPanel = false;
};

} // namespace mirrolet::platform
