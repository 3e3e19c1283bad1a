#include "platform/desktop/x11/capture/CapturePolicy.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace mirrolet::platform::desktop::x11 {
namespace {

using namespace std::chrono_literals;
using enum CaptureCommand;
using Commands = CapturePolicy::Commands;
using State = CapturePolicy::State;
using Time = CapturePolicy::Time;
using Event = std::function<Commands(CapturePolicy&, Time)>;

constexpr unsigned nothing = 0;
constexpr unsigned damaged = CapturePolicy::damaged;
constexpr unsigned replaced = CapturePolicy::replaced;
constexpr PixelSize size{100, 80};
constexpr PixelRect mostOfIt{0, 0, 75, 80};
constexpr PixelRect corner{0, 0, 10, 10};

Event tick(unsigned changes) {
    return [=](CapturePolicy& policy, Time now) { return policy.tick(changes, now); };
}

Event tickEnded() {
    return [](CapturePolicy& policy, Time now) { return policy.tickEnded(now); };
}

Event hidden() {
    return [](CapturePolicy& policy, Time /*now*/) { return policy.windowHidden(); };
}

Event viewable(bool isReadable, bool sameGeometry = true) {
    return [=](CapturePolicy& policy, Time now) {
        return policy.windowViewable({isReadable, sameGeometry}, now);
    };
}

Event redirectedByAnother(bool isRedirected) {
    return [=](CapturePolicy& policy, Time now) { return policy.redirectionChecked(isRedirected, now); };
}

Event pixmapNamed(bool repainted) {
    return [=](CapturePolicy& policy, Time /*now*/) { return policy.pixmapNamed(repainted); };
}

Event damageTaken(const PixelRect& box, bool repainted = false) {
    return [=](CapturePolicy& policy, Time /*now*/) { return policy.damageTaken(box, size, repainted); };
}

struct Row {
    std::chrono::milliseconds at;
    Event event;
    Commands commands;
    State state;
};

/// Feeds tables of events to a capture policy. The times in a table count from `begin`, which is the time of
/// the last row of the table before.
class CapturePolicyTest : public testing::Test {
  protected:
    void run(const std::vector<Row>& rows) {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            SCOPED_TRACE("row " + std::to_string(i));
            EXPECT_EQ(rows[i].event(policy, begin + rows[i].at), rows[i].commands);
            EXPECT_EQ(policy.state(), rows[i].state);
        }
        begin += rows.back().at;
    }

    void startDirect() {
        run({{0ms, tick(replaced), {checkWindow}, State::hidden},
             {0ms, viewable(true), {checkRedirection}, State::hidden},
             {0ms, redirectedByAnother(false), {readDirectly}, State::direct},
             {0ms, tickEnded(), {copyPixels}, State::direct}});
    }

    void startObscured() {
        run({{0ms, tick(replaced), {checkWindow}, State::hidden},
             {0ms, viewable(false), {checkRedirection}, State::hidden},
             {0ms, redirectedByAnother(false), {redirect, namePixmap}, State::awaitingRepaint}});
    }

    void startRedirected() {
        startObscured();
        run({{0ms, pixmapNamed(true), {showPixmap}, State::redirected},
             {0ms, tick(damaged), {checkWindow}, State::redirected},
             {0ms, viewable(false), {namePixmap}, State::redirected},
             {0ms, pixmapNamed(false), {showPixmap}, State::redirected}});
    }

    CapturePolicy policy;
    Time begin{1h};
};

TEST_F(CapturePolicyTest, ReadsAnUnobscuredWindowDirectlyAndKeepsACopyOfIt) {
    startDirect();
    run({{60ms, tick(nothing), {}, State::direct},
         {120ms, tick(damaged), {takeDamage}, State::direct},
         {120ms, damageTaken(corner), {applyDamage}, State::direct},
         {120ms, tickEnded(), {}, State::direct},
         {600ms, tick(damaged), {takeDamage}, State::direct},
         {600ms, damageTaken(corner), {applyDamage}, State::direct},
         {600ms, tickEnded(), {copyPixels}, State::direct},
         {700ms, tick(damaged), {takeDamage}, State::direct},
         {700ms, tickEnded(), {}, State::direct},
         {1690ms, tick(nothing), {}, State::direct},
         // The last damage was a second ago, so the whole window is read once more.
         {1700ms, tick(nothing), {damageAll}, State::direct},
         {1700ms, tickEnded(), {copyPixels}, State::direct},
         {1760ms, tick(nothing), {}, State::direct},
         {1h, tick(nothing), {}, State::direct},
         // The window changes again, so the policy checks whether the window is obscured. The window is still
         // unobscured.
         {1h, tick(damaged), {checkWindow}, State::direct},
         {1h, viewable(true), {checkRedirection}, State::direct},
         {1h, redirectedByAnother(false), {damageAll}, State::direct},
         {1h, tick(replaced), {checkWindow}, State::direct},
         {1h, viewable(true, false), {checkRedirection}, State::direct},
         {1h, redirectedByAnother(false), {readDirectly}, State::direct},
         {1h, tickEnded(), {copyPixels}, State::direct}});
}

TEST_F(CapturePolicyTest, ShowsARedirectedWindowOnceItHasRepaintedItsObscuredParts) {
    startDirect();
    run({{0ms, tick(replaced), {checkWindow}, State::direct},
         {0ms, viewable(false), {checkRedirection}, State::direct},
         {0ms, redirectedByAnother(false), {stopReading, redirect, namePixmap}, State::awaitingRepaint},
         {0ms, pixmapNamed(false), {}, State::awaitingRepaint},
         {0ms, tickEnded(), {}, State::awaitingRepaint},
         // The window may have got another pixmap at its first damage, so the policy asks for the pixmap
         // again.
         {60ms, tick(damaged), {checkWindow}, State::awaitingRepaint},
         {60ms, viewable(false), {namePixmap}, State::awaitingRepaint},
         {60ms, pixmapNamed(false), {}, State::awaitingRepaint},
         {120ms, tick(damaged), {takeDamage}, State::awaitingRepaint},
         {120ms, damageTaken(corner), {}, State::awaitingRepaint},
         {180ms, tick(damaged), {takeDamage}, State::awaitingRepaint},
         {180ms, damageTaken(corner, true), {showPixmap}, State::redirected},
         {240ms, tick(damaged), {takeDamage}, State::redirected},
         {240ms, damageTaken(corner, true), {applyDamage}, State::redirected},
         {240ms, tickEnded(), {}, State::redirected}});
}

TEST_F(CapturePolicyTest, ShowsARedirectedWindowThatDoesNotRepaintAfterTwoSeconds) {
    startObscured();
    run({{0ms, pixmapNamed(false), {}, State::awaitingRepaint},
         {900ms, tick(damaged), {checkWindow}, State::awaitingRepaint},
         {900ms, viewable(false), {namePixmap}, State::awaitingRepaint},
         {900ms, pixmapNamed(false), {}, State::awaitingRepaint},
         {1900ms, tick(nothing), {damageAll}, State::awaitingRepaint},
         {1990ms, tick(nothing), {}, State::awaitingRepaint},
         {2000ms, tick(nothing), {checkWindow}, State::redirected},
         // The policy gets no answer to `checkWindow`, as when the window's new pixmap cannot be read. The
         // earlier pixmap is still not shown, because the window has not repainted it.
         {2010ms, tick(nothing), {}, State::redirected},
         {2010ms, damageTaken(corner), {}, State::redirected},
         {2060ms, tick(replaced), {checkWindow}, State::redirected},
         {2060ms, viewable(false), {namePixmap}, State::redirected},
         {2060ms, pixmapNamed(false), {showPixmap}, State::redirected}});
}

TEST_F(CapturePolicyTest, DropsAWaitingPixmapWhenTheWindowIsReadDirectlyAgain) {
    startObscured();
    run({{0ms, pixmapNamed(false), {}, State::awaitingRepaint},
         {1990ms, tick(replaced), {checkWindow}, State::awaitingRepaint},
         {2000ms, viewable(true), {unredirect, checkRedirection}, State::hidden},
         {2000ms, redirectedByAnother(false), {readDirectly}, State::direct},
         {2060ms, tick(damaged), {takeDamage}, State::direct},
         {2060ms, damageTaken(corner), {applyDamage}, State::direct}});
}

TEST_F(CapturePolicyTest, ReadsDirectlyAgainWhenAChangingWindowIsFoundUnobscured) {
    startRedirected();
    run({{1500ms, tick(replaced), {checkWindow}, State::redirected},
         {1500ms, viewable(true), {namePixmap}, State::redirected},
         {1500ms, pixmapNamed(false), {showPixmap}, State::redirected},
         {3400ms, tick(damaged), {takeDamage}, State::redirected},
         {3500ms, tick(damaged), {checkWindow}, State::redirected},
         {3500ms, viewable(false), {namePixmap}, State::redirected},
         {3500ms, pixmapNamed(false), {showPixmap}, State::redirected},
         {5500ms, tick(damaged), {checkWindow}, State::redirected},
         {5500ms, viewable(true), {unredirect, checkRedirection}, State::hidden},
         {5500ms, redirectedByAnother(false), {readDirectly}, State::direct},
         {5500ms, tickEnded(), {copyPixels}, State::direct}});
}

TEST_F(CapturePolicyTest, RedirectsAWindowThatAnotherClientHasRedirected) {
    startDirect();
    run({{0ms, tick(replaced), {checkWindow}, State::direct},
         {0ms, viewable(true), {checkRedirection}, State::direct},
         {0ms, redirectedByAnother(true), {stopReading, redirect, namePixmap}, State::awaitingRepaint},
         {0ms, pixmapNamed(true), {showPixmap}, State::redirected},
         {2000ms, tick(damaged), {checkWindow}, State::redirected},
         {2000ms, viewable(true), {unredirect, checkRedirection}, State::hidden},
         {2000ms, redirectedByAnother(true), {redirect, namePixmap}, State::awaitingRepaint}});
}

TEST_F(CapturePolicyTest, LeavesAHiddenWindowAloneUntilItIsViewableAgain) {
    startDirect();
    run({{0ms, hidden(), {stopReading}, State::hidden},
         {0ms, tickEnded(), {}, State::hidden},
         {0ms, viewable(false), {checkRedirection}, State::hidden},
         {0ms, redirectedByAnother(false), {redirect, namePixmap}, State::awaitingRepaint},
         {0ms, pixmapNamed(false), {}, State::awaitingRepaint},
         {0ms, hidden(), {unredirect, stopReading}, State::hidden},
         {1h, tick(nothing), {damageAll}, State::hidden},
         {2h, tick(nothing), {}, State::hidden},
         {2h, tick(damaged), {takeDamage}, State::hidden},
         {2h, damageTaken(corner, true), {applyDamage}, State::hidden},
         {2h, viewable(true), {checkRedirection}, State::hidden},
         {2h, redirectedByAnother(false), {readDirectly}, State::direct}});
}

/// Tests ticks that each report damage to most of the window.
class CapturePolicyTestOfContinuousDamage : public CapturePolicyTest {
  protected:
    void SetUp() override { startDirect(); }

    void reportMost(int ticks, const Commands& lastCommands) {
        for (int i = 1; i <= ticks; ++i)
            run({{1ms, tick(damaged), {takeDamage}, State::direct},
                 {1ms, damageTaken(mostOfIt), i < ticks ? Commands{applyDamage} : lastCommands,
                  State::direct}});
    }

    void passAssumedTicks(int ticks) {
        for (int i = 0; i < ticks; ++i)
            run({{1ms, tick(nothing), {damageAll}, State::direct}});
    }
};

TEST_F(CapturePolicyTestOfContinuousDamage, IsAssumedForSomeTicksAndThenConfirmed) {
    reportMost(15, {applyDamage, ignoreDamage});
    for (int round = 0; round < 3; ++round) {
        passAssumedTicks(14);
        run({{1ms, tick(nothing), {watchDamage, damageAll}, State::direct}});
        reportMost(3, {applyDamage, ignoreDamage});
    }
    passAssumedTicks(14);
    run({{1ms, tick(nothing), {watchDamage, damageAll}, State::direct},
         {1ms, tick(damaged), {takeDamage}, State::direct},
         {1ms, damageTaken(mostOfIt), {applyDamage}, State::direct},
         {60ms, tick(nothing), {}, State::direct}});
}

TEST_F(CapturePolicyTestOfContinuousDamage, EndsWithASmallDamageOrATickWithoutAny) {
    const Row interruptions[] = {{1ms, tick(nothing), {}, State::direct},
                                 {1ms, damageTaken({0, 0, 74, 80}), {applyDamage}, State::direct}};
    for (const auto& interruption : interruptions) {
        reportMost(14, {applyDamage});
        run({interruption});
        reportMost(14, {applyDamage});
        run({{1ms, tick(nothing), {}, State::direct}});
    }
}

TEST_F(CapturePolicyTestOfContinuousDamage, IsReportedAgainBeforeTheWindowIsRedirected) {
    reportMost(15, {applyDamage, ignoreDamage});
    run({{1ms, tick(damaged), {damageAll}, State::direct}, // This damage was reported before `ignoreDamage`.
         {1ms, tick(replaced), {checkWindow}, State::direct},
         {1ms, viewable(false), {checkRedirection}, State::direct},
         {1ms,
          redirectedByAnother(false),
          {stopReading, watchDamage, redirect, namePixmap},
          State::awaitingRepaint},
         {2ms, tick(nothing), {}, State::awaitingRepaint}});
}

} // namespace
} // namespace mirrolet::platform::desktop::x11
