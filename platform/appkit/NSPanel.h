#pragma once

#include "platform/appkit/NSWindow.h"

namespace mirrolet::platform {

/// A window that helps: it never activates the program.
class NSPanel : public NSWindow {
  public:
    using NSWindow::NSWindow;

    bool isFloatingPanel = false;
};

} // namespace mirrolet::platform
