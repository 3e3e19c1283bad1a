// Tests that the program holds no more memory and resources after many sessions than after a few. The
// defaults are 40 sessions (14 with a sanitizer) and a mirror that stays open for 0.1 seconds in each. A run
// by hand can set more:
//   MIRROLET_SOAK_SESSIONS=1000 MIRROLET_SOAK_SECONDS=2 desktop_tests --gtest_filter='SoakTest.*'

#include "tests/desktop/endtoend/EndToEndTest.h"
#include "tests/desktop/harness/Holdings.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <thread>

namespace mirrolet {
namespace {

using namespace harness;

#ifdef __has_feature // Only Clang defines this. Sanitizer builds use Clang.
constexpr bool sanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool sanitized = false;
#endif

constexpr auto quietTime = std::chrono::milliseconds(sanitized ? 500 : 200);
/// After this many sessions the caches of Qt and of the allocator are full.
constexpr int warmUp = 10;
constexpr int briefly = sanitized ? 14 : 40;
// The memory may grow by this much, because the allocator keeps freed memory. It would grow far more if each
// session leaked one frame.
constexpr long memoryMarginKib = 2048;

double number(const char* variable, double otherwise) {
    const char* text = std::getenv(variable);
    return text == nullptr ? otherwise : std::atof(text);
}

class SoakTest : public EndToEndTest {
  protected:
    void SetUp() override {
        commands.setDesktopCount(2);
        start(R"("pollInterval": 0.05)");
    }

    /// Shows a call, accepts the prompt, mirrors the call and ends it. The number of the session decides what
    /// happens to the mirror meanwhile and how the call ends.
    void runSession(int session) {
        SCOPED_TRACE("session " + std::to_string(session));
        CallWindow call(server, {.rate = 30});
        accept();
        watch(call, session);
        if (session % 2 == 0)
            call.kill();
        else
            call.tell("quit");
        awaitNothing();
        // Waits until the monitor has polled while there is no call. Otherwise the next call would count as
        // the same call.
        holdsFor([this] { return nothingShown(); }, quietTime);
    }

    void accept() {
        awaitPrompt();
        keyboard.stroke({key::returnKey});
        awaitPanel();
    }

    void watch(const CallWindow& call, int session) {
        call.tell("resize " + std::to_string(300 + session % 7 * 60) + " 300");
        const Box box = facts.box(awaitPanel());
        if (session % 3 == 0)
            pointer.drag(box.x + 95, box.y + 95, box.x + 160, box.y + 130);
        std::this_thread::sleep_for(std::chrono::duration<double>(mirrorSeconds));
        if (session % 4 == 0)
            lookAtAnotherDesktop(call);
        if (session % 5 == 0)
            hideAndShow();
        pointer.move(2, 2);
    }

    /// Switches to another desktop and back. The mirror has to be shown all the time.
    void lookAtAnotherDesktop(const CallWindow& call) {
        commands.switchToDesktop(1);
        require("the source is out of sight", [&] { return !facts.viewable(call.window()); });
        awaitPanel();
        commands.switchToDesktop(0);
        require("the source is back", [&] { return facts.viewable(call.window()); });
        awaitPanel();
    }

    void hideAndShow() {
        pressVisibilityShortcut();
        require("the mirror is hidden", [this] { return nothingShown(); });
        pressVisibilityShortcut();
        awaitPanel();
    }

    /// Returns what the program holds. Before that, waits up to ten seconds until the program holds no more
    /// than `expected`, because threads of earlier sessions may still be ending.
    Holdings settled(const Holdings* expected) {
        auto now = Holdings::of(client, program->pid());
        waitUntil(
            [&] {
                now = Holdings::of(client, program->pid());
                return expected != nullptr && now.noMoreThan(*expected);
            },
            std::chrono::seconds(expected != nullptr ? 10 : 1));
        return now;
    }

    const double mirrorSeconds = number("MIRROLET_SOAK_SECONDS", 0.1);
};

TEST_F(SoakTest, HoldsNoMoreAfterManySessionsThanAfterTheTenth) {
    const int sessions = static_cast<int>(number("MIRROLET_SOAK_SESSIONS", briefly));
    for (int session = 1; session <= warmUp; ++session)
        runSession(session);
    const auto before = settled(nullptr);
    std::cout << "after " << warmUp << ": " << before << std::endl;
    for (int session = warmUp + 1; session <= sessions; ++session) {
        runSession(session);
        if (session % 50 == 0)
            std::cout << "after " << session << ": " << Holdings::of(client, program->pid()) << std::endl;
    }
    const auto after = settled(&before);
    std::cout << "after " << sessions << ": " << after << std::endl;
    EXPECT_TRUE(after.noMoreThan(before));
    // Sanitizers keep freed memory for a while, so they make the memory grow.
    EXPECT_TRUE(sanitized || after.residentKib - before.residentKib < memoryMarginKib);
    EXPECT_EQ(program->log(), "");
}

} // namespace
} // namespace mirrolet
