#pragma once

#include "platform/desktop/wayland/keyboard/SeatKeyboard.h"
#include "platform/desktop/wayland/plasma/PlasmaHotKeys.h"
#include "platform/desktop/wayland/session/CombinedDesktop.h"
#include "platform/desktop/wayland/session/WaylandConnection.h"

#include <memory>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

/// The desktop to use if the compositor is KWin and does not let this program capture windows. Lists the
/// windows of X11 applications, so that a call is detected and the user is told what is missing. Hot keys
/// need no permission.
class UnpermittedDesktop final : public CombinedDesktop {
  public:
    /// The connection must not have started.
    UnpermittedDesktop(std::unique_ptr<Desktop> shownBy, std::unique_ptr<WaylandConnection> opened)
        : CombinedDesktop(std::move(shownBy)), connection(std::move(opened)), keyboard(*connection),
          theHotKeys(keyboard, [this](std::uint32_t code) { return shown->hotKeys().isDown(code); }) {
        // The first replies name the keyboard. The second replies describe it.
        connection->waitForReplies();
        connection->waitForReplies();
        connection->start([] {}); // Logs nothing, because the loss of XWayland is logged.
    }
    ~UnpermittedDesktop() override { connection->end(); }
    UnpermittedDesktop(const UnpermittedDesktop&) = delete;
    UnpermittedDesktop& operator=(const UnpermittedDesktop&) = delete;

    WindowCapture& capture() override { return nothing; }
    HotKeys& hotKeys() override { return theHotKeys; }

  private:
    class NoCapture final : public WindowCapture {
      public:
        [[nodiscard]] bool permitted() const override { return false; }
        CaptureResult capture(WindowNumber /*window*/) override { return CaptureFailure::notPermitted; }
    };
    // Members are destroyed from the bottom up, so the connection is destroyed after its objects.
    std::unique_ptr<WaylandConnection> connection;
    SeatKeyboard keyboard;
    PlasmaHotKeys theHotKeys;
    NoCapture nothing;
};

} // namespace mirrolet::platform::desktop::wayland
