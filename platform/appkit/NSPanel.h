#pragma once

#include "platform/appkit/NSWindow.h"

namespace mirrolet::platform {

/// A window that never activates the program.
class NSPanel : public NSWindow {
  public:
    using NSWindow::NSWindow;

    // Has no effect, because the level decides on this desktop. Kept for callers that set a value.
    bool isFloatingPanel = false;
};

} // namespace mirrolet::platform
