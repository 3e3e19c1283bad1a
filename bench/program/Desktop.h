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

/// Starts a desktop with a window manager and a tray. The functions do what a user does in a call. A function
/// throws HarnessError if its action has no effect.
class Desktop {
  public:
    Desktop();

    /// Starts Mirrolet with this poll interval in seconds.
    [[nodiscard]] std::unique_ptr<harness::Program> start(double pollInterval) const;
    /// Shows a call window of 1280 x 800 at a place where no mirror obscures it.
    [[nodiscard]] std::unique_ptr<harness::CallWindow> showCall(int framesPerSecond) const;
    /// Presses Return on the prompt. Returns the mirror panel.
    xcb_window_t acceptPrompt(const harness::Program& program);
    /// Drags the mirror to a free place on the screen. Then drags the mirror's grip until the mirror has this
    /// size.
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
