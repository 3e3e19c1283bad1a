#pragma once

#include "tests/desktop/harness/CallWindow.h"
#include "tests/desktop/harness/DesktopServices.h"
#include "tests/desktop/harness/Keyboard.h"
#include "tests/desktop/harness/Pointer.h"
#include "tests/desktop/harness/Program.h"
#include "tests/desktop/harness/SessionBus.h"
#include "tests/desktop/harness/WindowManager.h"
#include "tests/desktop/harness/XServer.h"

#include <memory>

namespace mirrolet::bench {

/// A desktop with a window manager and a tray, and what someone in a call does on it. A step that does not
/// happen throws.
class Desktop {
  public:
    Desktop();

    /// Mirrolet, with this many seconds between two looks at the windows.
    [[nodiscard]] std::unique_ptr<harness::Program> start(double pollInterval) const;
    /// A window of 1280 x 800 that stands where neither mirror covers it.
    [[nodiscard]] std::unique_ptr<harness::CallWindow> showCall(int framesPerSecond) const;
    /// Return on the prompt; gives the mirror.
    xcb_window_t acceptPrompt(const harness::Program& program);
    /// Drags the mirror to where there is room, and then its grip until it has that size.
    void resize(xcb_window_t panel, int width, int height);

    harness::XServer server{{.width = 1700, .height = 1100}};
    harness::SessionBus bus;
    harness::WindowManager manager{server, harness::WindowManagerKind::openbox};
    harness::TrayHost tray{server};
    harness::XClient client{server};
    harness::WindowFacts facts{client};

  private:
    harness::Pointer pointer{client};
};

} // namespace mirrolet::bench
