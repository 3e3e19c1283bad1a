#include "tests/desktop/endtoend/EndToEndTest.h"
#include "tests/desktop/harness/DesktopServices.h"

#include <csignal>
#include <cstdlib>
#include <thread>

namespace mirrolet {
namespace {

using namespace harness;

/// Tests faults during a session, such as the end of another program. The mirror has to go on, the shortcuts
/// have to work, and the log has to stay empty.
class FaultTest : public EndToEndTest {
  protected:
    void open() {
        startQuiet();
        call = showCall();
        panel = openMirror(*call);
    }

    void expectAlive(const std::string& when) {
        SCOPED_TRACE(when);
        for (const auto colour : {green, orange, blue}) {
            paint(*call, colour);
            awaitColour(panel, colour);
        }
        pressVisibilityShortcut();
        require("the mirror is hidden " + when, [this] { return nothingShown(); });
        pressVisibilityShortcut();
        EXPECT_EQ(awaitPanel(), panel);
        awaitColour(panel, blue);
        EXPECT_EQ(program->log(), "");
    }

    void pause() {
        const char* wanted = std::getenv("MIRROLET_PAUSE_SECONDS");
        program->child().signal(SIGSTOP);
        std::this_thread::sleep_for(std::chrono::duration<double>(wanted == nullptr ? 3 : std::atof(wanted)));
        program->child().signal(SIGCONT);
    }

    std::unique_ptr<CallWindow> call;
    xcb_window_t panel = XCB_NONE;
};

TEST_F(FaultTest, AMirrorOutlivesItsWindowManager) {
    open();
    for (const auto next : {WindowManagerKind::openbox, WindowManagerKind::fluxbox}) {
        manager.reset();
        expectAlive("without a window manager");
        manager = std::make_unique<WindowManager>(server, next);
        expectAlive("with " + WindowManager::name(next));
    }
}

TEST_F(FaultTest, AMirrorOutlivesTheCompositingManager) {
    open();
    for (int times = 0; times < 2; ++times) {
        const Picom picom(server);
        expectAlive("with a compositing manager");
        picom.kill();
        expectAlive("after it");
    }
}

TEST_F(FaultTest, AMirrorOutlivesTheSessionBus) {
    open();
    bus.kill();
    expectAlive("without a session bus");
    bus.restart();
    expectAlive("with a new session bus");
    program->child().signal(SIGTERM);
    EXPECT_EQ(program->child().waitForExit(), 0);
}

/// Stops the whole program for 3 seconds, as when the machine sleeps. A run by hand can set another length:
/// MIRROLET_PAUSE_SECONDS=60
TEST_F(FaultTest, AMirrorGoesOnAfterAPauseOfTheWholeProgram) {
    start(R"("pollInterval": 0.05, "promptTimeout": 1)");
    call = showCall();
    awaitPrompt();
    pause();
    awaitNothing();

    panel = openMirror(*call);
    for (int times = 0; times < 2; ++times) {
        call->tell("rate 60");
        pause();
        call->tell("rate 0");
        expectAlive("after a pause");
    }
}

#ifdef FAKETIME_LIBRARY
/// Changes the clock while a mirror is shown, as users and time servers do. Only the program sees the changed
/// time.
TEST_F(FaultTest, AMirrorDoesNotMindAClockThatJumps) {
    const auto home = std::make_shared<Sandbox>();
    const auto clock = home->write("clock", "+0");
    program =
        std::make_unique<Program>(&server, &bus,
                                  Program::Options{.defaults = Program::defaults(R"("promptTimeout": 1)"),
                                                   .environment = {{"LD_PRELOAD", FAKETIME_LIBRARY},
                                                                   {"FAKETIME_TIMESTAMP_FILE", clock},
                                                                   {"FAKETIME_NO_CACHE", "1"},
                                                                   {"FAKETIME_DONT_FAKE_MONOTONIC", "1"}},
                                                   .home = home});
    call = showCall();
    awaitPrompt();
    home->write("clock", "-400d");
    awaitNothing();
    panel = openMirror(*call);
    expectAlive("with an earlier clock");
    home->write("clock", "+400d");
    expectAlive("with a later clock");
    home->write("clock", "-400d");
    call.reset();
    awaitNothing();
}
#endif

} // namespace
} // namespace mirrolet
