#pragma once

#include "tests/desktop/harness/CallWindow.h"
#include "tests/desktop/harness/Keyboard.h"
#include "tests/desktop/harness/Pointer.h"
#include "tests/desktop/harness/Program.h"
#include "tests/desktop/harness/SessionBus.h"
#include "tests/desktop/harness/WindowCommands.h"
#include "tests/desktop/harness/WindowManager.h"
#include "tests/desktop/harness/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace mirrolet {

/// Runs the real program on a desktop, and acts as its user. A function whose action has no effect throws an
/// error with a message, and the test fails.
class EndToEndTest : public testing::Test {
  protected:
    static constexpr std::uint32_t blue = 0x2040c0;
    static constexpr std::uint32_t green = 0x20a040;
    static constexpr std::uint32_t orange = 0xe08020;
    static constexpr int superAlt = XCB_MOD_MASK_4 | XCB_MOD_MASK_1;

    explicit EndToEndTest(harness::WindowManagerKind kind = harness::WindowManagerKind::openbox,
                          const harness::XServer::Options& screen = {});
    void TearDown() override;

    /// Starts the program with these settings and a short poll interval. Returns when the shortcuts work.
    void start(const std::string& defaults = {});
    /// Starts the program without monitoring, so that only shortcuts open a mirror.
    void startQuiet(const std::string& defaults = {});

    /// Shows a square window that counts as a call. The window shows `quarters(colour)` and does not change.
    std::unique_ptr<harness::CallWindow> showCall(std::uint32_t colour = blue);
    std::unique_ptr<harness::CallWindow> showWindow(const harness::CallWindow::Options& options);
    void giveFocusTo(const harness::CallWindow& window);

    xcb_window_t awaitPrompt();
    xcb_window_t awaitPanel();
    void awaitNothing();
    /// Returns whether neither the prompt nor the mirror appears during several polls.
    bool nothingAppears();
    bool nothingShown();
    /// Gives the focus to the call, opens a mirror by the shortcut, and waits until the mirror shows the
    /// colour.
    xcb_window_t openMirror(const harness::CallWindow& call, std::uint32_t colour = blue);

    void pressFrontmostShortcut() {
        keyboard.stroke({harness::key::leftSuper, harness::key::leftAlt, harness::key::f});
    }
    void pressVisibilityShortcut() {
        keyboard.stroke({harness::key::leftSuper, harness::key::leftAlt, harness::key::p});
    }
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

    harness::XServer server;
    harness::SessionBus bus;
    std::unique_ptr<harness::WindowManager> manager;
    harness::XClient client{server};
    harness::WindowFacts facts{client};
    harness::WindowCommands commands{client};
    harness::Keyboard keyboard{client};
    harness::Pointer pointer{client};
    std::unique_ptr<harness::Program> program;
    xcb_window_t source = XCB_NONE;
};

} // namespace mirrolet
