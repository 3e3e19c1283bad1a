#pragma once

#include "tests/desktop/endtoend/AnyDesktopTest.h"
#include "tests/desktop/harness/CallWindow.h"
#include "tests/desktop/harness/WindowCommands.h"
#include "tests/desktop/harness/X11TestDesktop.h"

#include <memory>
#include <string>

namespace mirrolet {

/// Runs Mirrolet on X11 under one of the window managers, and compares every pixel of its mirror.
class EndToEndTest : public AnyDesktopTest {
  protected:
    static constexpr std::uint32_t blue = 0x2040c0;
    static constexpr std::uint32_t green = 0x20a040;
    static constexpr std::uint32_t orange = 0xe08020;
    static constexpr int superAlt = XCB_MOD_MASK_4 | XCB_MOD_MASK_1;

    explicit EndToEndTest(harness::WindowManagerKind kind = harness::WindowManagerKind::openbox,
                          const harness::XServer::Options& screen = {});

    /// Shows a square window that counts as a call. The window shows `quarters(colour)` and does not change.
    std::unique_ptr<harness::CallWindow> showCall(std::uint32_t colour = blue);
    std::unique_ptr<harness::CallWindow> showWindow(const harness::CallWindow::Options& options);
    void giveFocusTo(const harness::CallWindow& window);

    /// Gives the focus to the call, opens a mirror by the shortcut, and waits until the mirror shows the
    /// colour.
    xcb_window_t openMirror(const harness::CallWindow& call, std::uint32_t colour = blue);

    /// Returns whether another client has grabbed the key with these modifiers (X masks).
    bool isGrabbed(int evdevCode, int modifiers = superAlt) {
        return isGrabbed(client, evdevCode, modifiers);
    }
    static bool isGrabbed(harness::XClient& client, int evdevCode, int modifiers = superAlt) {
        return harness::isKeyGrabbed(client, evdevCode, modifiers);
    }
    /// Returns the colours of a window's four quarters as CallWindow takes them. These are `colour` and three
    /// others that are made from it.
    static std::string quarters(std::uint32_t colour);

    [[nodiscard]] std::uint32_t centreOf(xcb_window_t window) const;
    static void paint(const harness::CallWindow& call, std::uint32_t colour) {
        call.tell("colour " + quarters(colour));
    }
    /// Returns whether every pixel of the mirror is right while the source is painted in `quarters(colour)`.
    /// The source is the call that was shown or mirrored last. If that window is gone, the function assumes a
    /// square source. Leaves out the places of the border, the corners and the controls.
    [[nodiscard]] bool shows(xcb_window_t panel, std::uint32_t colour) const;
    void awaitColour(xcb_window_t panel, std::uint32_t colour);
    void clickCloseButton(xcb_window_t panel);

    harness::X11TestDesktop& x11 = static_cast<harness::X11TestDesktop&>(*desktop);
    harness::XServer& server = x11.server;
    harness::SessionBus& bus = x11.sessionBus;
    std::unique_ptr<harness::WindowManager>& manager = x11.manager;
    harness::WindowCommands commands{client};
    xcb_window_t source = XCB_NONE;
};

} // namespace mirrolet
