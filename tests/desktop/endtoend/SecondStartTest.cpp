#include "tests/desktop/endtoend/EndToEndTest.h"
#include "tests/desktop/harness/Wait.h"

#include <csignal>

namespace mirrolet {
namespace {

using namespace harness;

class SecondStartTest : public EndToEndTest {
  protected:
    using Bus = const SessionBus*;

    /// Starts the program. Returns when a second start of the program can find it.
    std::unique_ptr<Program> startOn(const XServer& screen, Bus bus) {
        auto started = std::make_unique<Program>(&screen, bus, Program::Options{.home = home});
        XClient onScreen(screen);
        require("the program takes its shortcuts", [&] { return isGrabbed(onScreen, key::f); });
        return started;
    }

    void expectSecondShows(const XServer& screen, Bus bus, const Program& first) {
        EXPECT_EQ(Program(&screen, bus, {.home = home}).child().waitForExit(), 0);
        XClient onScreen(screen);
        const WindowFacts there(onScreen);
        require("the first shows its settings", [&] { return first.windows(there).size() == 1; });
    }

    std::shared_ptr<Sandbox> home = std::make_shared<Sandbox>();
};

TEST_F(SecondStartTest, FindsTheFirstWithoutABusAndNothingOfOneThatWasKilled) {
    for (int times = 0; times < 2; ++times) {
        const auto first = startOn(server, nullptr);
        expectSecondShows(server, nullptr, *first);
        first->child().signal(SIGKILL);
        first->child().waitForExit();
        require("nothing is grabbed", [this] { return !isGrabbed(key::f); });
    }
}

TEST_F(SecondStartTest, OnAnotherDisplayIsAnotherProgram) {
    const XServer right;
    const auto first = startOn(server, &bus);
    const auto second = startOn(right, &bus);
    expectSecondShows(right, &bus, *second);
    EXPECT_TRUE(first->child().running());
    EXPECT_TRUE(first->windows(facts).empty());
}

} // namespace
} // namespace mirrolet
