// Tests faults during a call in a Plasma session. By default 20 calls die. A run by hand can set another
// number:
// MIRROLET_SESSIONS=1000 desktop_tests --gtest_filter='PlasmaFaultTest.*'

#include "tests/desktop/endtoend/AnyDesktopTest.h"
#include "tests/desktop/harness/Holdings.h"
#include "tests/desktop/harness/plasma/KWinInput.h"
#include "tests/desktop/harness/plasma/NativeWindow.h"
#include "tests/desktop/harness/plasma/PlasmaTestDesktop.h"

#include <chrono>
#include <cstdlib>
#include <random>
#include <thread>

namespace mirrolet {
namespace {

using namespace harness;
using namespace std::chrono_literals;

/// Tests that Mirrolet goes on when something that it needs fails.
class PlasmaFaultTest : public AnyDesktopTest {
  protected:
    explicit PlasmaFaultTest(const PlasmaSession::Options& options = {})
        : AnyDesktopTest(std::make_unique<PlasmaTestDesktop>(options)) {}

    PlasmaSession& session = static_cast<PlasmaTestDesktop&>(*desktop).session;
};

/// A frame may keep at most this many resources after its mirror has ended.
constexpr long lastFrame = 6;

long total(const Holdings& holdings) {
    long sum = 0;
    for (const auto& [kind, count] : holdings.counts)
        sum += count;
    return sum;
}

class PlasmaPermissionTest : public PlasmaFaultTest {
  protected:
    PlasmaPermissionTest() : PlasmaFaultTest({.checksPermissions = true}) {}
};

TEST_F(PlasmaFaultTest, CallsThatDieAtAnyMomentLeaveNothingBehind) {
    start();
    const char* wanted = std::getenv("MIRROLET_SESSIONS");
    const int sessions = wanted == nullptr ? 20 : std::atoi(wanted);
    std::mt19937 chance{7}; // NOLINT: the fixed seed makes each run the same.
    Holdings before;
    for (int number = 0; number < sessions; ++number) {
        const auto call = desktop->show({.rate = 30});
        if (chance() % 4 != 0) {
            awaitPrompt();
            keyboard.stroke({key::returnKey});
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(chance() % 200));
        call->kill();
        // The prompt may appear some time after its call has died.
        require("neither prompt nor mirror is left", [this] { return nothingAppears(); });
        if (number == 4)
            before = Holdings::of(client, program->pid());
    }
    const auto after = Holdings::of(client, program->pid());
    EXPECT_LE(total(after), total(before) + lastFrame) << before << "\nand then\n" << after;
    const auto call = showCall();
    accept();
    awaitLive(*call);
}

TEST_F(PlasmaFaultTest, AMirrorSurvivesAStormOfSizes) {
    start();
    const auto call = desktop->show({.rate = 30});
    accept();
    std::mt19937 chance{7}; // NOLINT: the fixed seed makes each run the same.
    for (int times = 0; times < 100; ++times) {
        call->tell("resize " + std::to_string(100 + chance() % 900) + " " +
                   std::to_string(100 + chance() % 600));
        std::this_thread::sleep_for(std::chrono::milliseconds(chance() % 20));
    }
    call->tell("resize 400 400");
    call->tell("rate 0");
    awaitLive(*call);
}

TEST_F(PlasmaFaultTest, AMirrorCanBeOpenedAfterPipeWireWasRestarted) {
    startQuiet();
    const auto call = showCall();
    awaitFocus(*call);
    openMirror();
    session.pipeWire().restart();
    recolour(*call, otherColours);
    require("the mirror has ended or goes on", [&] { return nothingShown() || shows(otherColours); });
    if (nothingShown())
        openMirror(otherColours);
    awaitLive(*call);
}

/// XWayland and all windows end together with KWin.
TEST_F(PlasmaFaultTest, ItGoesOnAfterTheCompositorCrashed) {
    start();
    {
        const auto call = showCall();
        accept();
    }
    session.crashCompositor();
    XClient newClient(session);
    const WindowFacts newFacts(newClient);
    Keyboard newKeyboard(std::make_shared<KWinInput>(session));
    require("the program takes its shortcuts again", [this] { return desktop->hasShortcuts(); });
    const NativeWindow call(session);
    const xcb_window_t prompt = program->awaitPrompt(newFacts);
    require("Return opens the mirror", [&] {
        if (newFacts.exists(prompt))
            newKeyboard.stroke({key::returnKey});
        return program->panel(newFacts).has_value();
    });
}

TEST_F(PlasmaPermissionTest, IsMissingUntilADesktopEntryNamesTheProgram) {
    program = std::make_unique<Program>(&session, &session.bus(),
                                        Program::Options{.defaults = Program::defaults()});
    require("the log names the remedy", [this] {
        return program->log().find("no desktop entry names this program") != std::string::npos;
    });
    const auto file = std::filesystem::read_symlink("/proc/" + std::to_string(program->pid()) + "/exe");
    const auto call = showCall();
    EXPECT_TRUE(holdsFor([this] { return !program->prompt(facts); }, 1s));
    program.reset();
    // Only the program itself tells KWin about the new entry.
    session.writeEntry(
        "app.mirrolet.Mirrolet",
        "[Desktop Entry]\nType=Application\nName=Mirrolet\nExec=" + file.string() +
            "\nX-KDE-Wayland-Interfaces=org_kde_plasma_window_management,zkde_screencast_unstable_v1\n");
    start();
    accept();
    awaitLive(*call);
}

} // namespace
} // namespace mirrolet
