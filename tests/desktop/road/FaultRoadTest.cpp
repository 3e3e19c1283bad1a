#include "tests/desktop/harness/DesktopServices.h"
#include "tests/desktop/road/RoadTest.h"

#include <csignal>
#include <optional>

namespace mirrolet {
namespace {

using namespace harness;
using namespace std::chrono_literals;

/// A session in which something else ends. The mirror goes on, the shortcuts work, and nobody complains.
class AMirror : public RoadTest {
  protected:
    void open() {
        startQuiet();
        call = showCall();
        panel = openMirror(*call);
    }

    void expectAlive(const std::string& when) {
        SCOPED_TRACE(when);
        for (const auto colour : {green, orange, blue}) {
            call->tell("colour " + colourName(colour));
            awaitColour(panel, colour);
        }
        pressVisibilityShortcut();
        require("the mirror is hidden " + when, [this] { return nothingShown(); });
        pressVisibilityShortcut();
        EXPECT_EQ(awaitPanel(), panel);
        awaitColour(panel, blue);
        EXPECT_EQ(program->log(), "");
    }

    std::unique_ptr<CallWindow> call;
    xcb_window_t panel = XCB_NONE;
};

TEST_F(AMirror, OutlivesItsWindowManager) {
    open();
    for (const auto next : {WindowManagerKind::openbox, WindowManagerKind::fluxbox}) {
        manager.reset();
        expectAlive("without a window manager");
        manager = std::make_unique<WindowManager>(server, next);
        expectAlive("with " + WindowManager::name(next));
    }
}

TEST_F(AMirror, OutlivesTheCompositingManager) {
    open();
    for (int times = 0; times < 2; ++times) {
        const Picom picom(server);
        expectAlive("with a compositing manager");
        picom.kill();
        expectAlive("after it");
    }
}

TEST_F(AMirror, OutlivesTheTray) {
    std::optional<TrayHost> tray(std::in_place, server);
    open();
    for (int times = 0; times < 2; ++times) {
        tray->kill();
        expectAlive("without a tray");
        tray.emplace(server);
        expectAlive("with a new tray");
    }
}

TEST_F(AMirror, OutlivesTheSessionBus) {
    open();
    bus.kill();
    expectAlive("without a session bus");
    program->child().signal(SIGTERM);
    EXPECT_EQ(program->child().waitForExit(), 0);
}

TEST_F(AMirror, GoesOnAfterAPauseOfTheWholeProgram) {
    open();
    program->child().signal(SIGSTOP);
    call->tell("rate 60");
    holdsFor([] { return true; }, 2000ms);
    call->tell("rate 0");
    program->child().signal(SIGCONT);
    expectAlive("after a pause");
}

TEST_F(AMirror, IsShownWhereNothingCanBeSaved) {
    const auto home = std::make_shared<Sandbox>();
    home->write("config/mirrolet", "a file in the folder's place");
    program = std::make_unique<Program>(&server, &bus, Program::Options{.home = home});
    require("the program takes its shortcuts", [this] { return isGrabbed(key::f); });
    call = showCall();
    awaitPrompt();
    keyboard.stroke({key::returnKey});
    panel = awaitPanel();
    expectAlive("with a file in the folder's place");
    program->child().signal(SIGTERM);
    EXPECT_EQ(program->child().waitForExit(), 0);
}

} // namespace
} // namespace mirrolet
