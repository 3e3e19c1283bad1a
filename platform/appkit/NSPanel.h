#pragma once

#include "platform/appkit/NSWindow.h"

namespace mirrolet::platform {

/// A window that never brings the program to the front.
class NSPanel : public NSWindow {
  public:
    using NSWindow::NSWindow;

    // Has no effect, because on this desktop only the level of a window decides whether the window floats.
    // Kept for callers that set a value.
    bool isFloatingPanel = false;
};

} // namespace mirrolet::platform
