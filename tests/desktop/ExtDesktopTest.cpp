// Tests what is seen in a session with the standard protocols. A scripted compositor plays the other side.

#include "platform/desktop/wayland/ext/ExtDesktop.h"

#include "platform/desktop/wayland/ext/CaptureProtocols.h"
#include "platform/desktop/x11/X11Desktop.h"
#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/Wait.h"
#include "tests/desktop/harness/XServer.h"
#include "tests/desktop/harness/ext/ScriptedCompositor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <random>
#include <thread>

namespace mirrolet::platform::desktop::wayland {
namespace {

using namespace harness;
using namespace std::chrono_literals;

constexpr auto tickInterval = 67ms;
constexpr std::uint32_t unknownReason = 0; ///< Like the next two, why a frame fails.
constexpr std::uint32_t constraintsReason = 1;
constexpr std::uint32_t stoppedReason = 2;

class ExtDesktopTest : public testing::Test {
  protected:
    /// Connects to the compositor, as at the start of the program.
    void connect() {
        image.reset();
        desktop.reset();
        setenv("WAYLAND_DISPLAY", compositor->socket().c_str(), 1);
        setenv("DISPLAY", server.display().c_str(), 1);
        std::string problem;
        auto connection = WaylandConnection::open(problem);
        auto shown = x11::makeX11Desktop(problem, [] {});
        unsetenv("WAYLAND_DISPLAY");
        unsetenv("DISPLAY");
        if (!connection || !shown || !offersToplevelCapture(*connection))
            throw HarnessError("the desktop cannot be put together: " + problem);
        desktop = makeExtDesktop(std::move(shown), std::move(connection), report);
    }
    std::vector<WindowRow> rows() { return desktop->windowList().onScreenWindows().value(); }
    std::vector<std::string> titles() {
        std::vector<std::string> result;
        for (const auto& row : rows())
            result.push_back(row.title.value_or("none"));
        return result;
    }
    /// Waits until the list has this many windows, and returns the number of the first one.
    WindowNumber awaitRows(std::size_t count) {
        require("the windows are listed", [&] { return rows().size() == count; });
        return count == 0 ? 0 : rows().front().number;
    }
    std::string frontmost() {
        const auto application = desktop->applications().frontmost();
        return application ? application->name : "none";
    }
    /// Captures the window, as a mirror does at each tick. Returns false if there is no image.
    bool capture(WindowNumber number) {
        const auto result = desktop->capture().capture(number);
        const auto* captured = std::get_if<std::shared_ptr<const WindowImage>>(&result);
        image = captured ? *captured : nullptr;
        return image != nullptr;
    }
    std::optional<CaptureFailure> failureOf(WindowNumber number) {
        const auto result = desktop->capture().capture(number);
        const auto* failure = std::get_if<CaptureFailure>(&result);
        return failure ? std::optional(*failure) : std::nullopt;
    }
    [[nodiscard]] Picture captured() const {
        auto bitmap = image->readBack();
        for (auto& pixel : bitmap.pixels)
            pixel &= 0xffffff;
        return {bitmap.size.width, bitmap.size.height, std::move(bitmap.pixels)};
    }
    /// Returns whether the mirror shows the window's pixels, all of them, within a second or so.
    bool showsAll(WindowNumber number, std::size_t window) {
        const auto expected = compositor->picture(window);
        for (int ticks = 0; ticks < 40; ++ticks) {
            if (capture(number) && captured() == expected)
                return true;
            std::this_thread::sleep_for(tickInterval);
        }
        return false;
    }

    XServer server;
    std::unique_ptr<ScriptedCompositor> compositor = std::make_unique<ScriptedCompositor>();
    std::unique_ptr<Desktop> desktop;
    std::string report;
    std::shared_ptr<const WindowImage> image; ///< Destroyed before the desktop.
};

TEST_F(ExtDesktopTest, ListsTheWindowsWithSizesAndClosesTheSessionsThatMeasureThem) {
    const auto call =
        compositor->open({.title = "Video call", .application = "Chat", .width = 640, .height = 480});
    const auto chats =
        compositor->open({.title = "Chats", .application = "Chat", .width = 300, .height = 200});
    compositor->open({.title = "", .application = "Notes", .states = ScriptedCompositor::activated});
    compositor->open({.title = "Hidden", .states = ScriptedCompositor::minimized});
    connect();
    EXPECT_TRUE(waitUntil([&] { return compositor->sessionsOpened(call) == 1; })) << "A poll is too late.";
    awaitRows(3);
    EXPECT_THAT(titles(), testing::ElementsAre("none", "Chats", "Video call"));
    const auto listed = rows();
    EXPECT_EQ(listed[2].bounds, (PixelRect{0, 0, 640, 480}));
    EXPECT_EQ(listed[2].ownerName, "Chat");
    EXPECT_EQ(listed[2].ownerPid, listed[1].ownerPid);
    EXPECT_NE(listed[2].ownerPid, listed[0].ownerPid);
    EXPECT_EQ(desktop->applications().running(listed[0].ownerPid)->name, "Notes");
    EXPECT_EQ(frontmost(), "Notes");

    EXPECT_EQ(compositor->openSessions(call), 0U);
    EXPECT_EQ(compositor->sessionsOpened(call), 1) << "A poll measures nothing that has not changed.";
    compositor->close(chats);
    EXPECT_TRUE(waitUntil([&] { return rows().size() == 2; }));
    compositor->open({.title = "Chats"});
    awaitRows(3);
    for (const auto& row : rows())
        EXPECT_NE(row.number, listed[1].number) << "A number is used again.";
}

TEST_F(ExtDesktopTest, FollowsListsThatAreOutOfStep) {
    const auto call = compositor->open({.title = "Chats", .application = "Chat", .hidesApplication = true});
    connect();
    awaitRows(1);
    EXPECT_EQ(rows().front().ownerName, "Chat") << "The application is in one of the lists only.";
    compositor->setTitle(call, "Video call", ScriptedCompositor::Lists::ext);
    EXPECT_TRUE(waitUntil([&] { return titles() == std::vector<std::string>{"Video call"}; }));
    compositor->setStates(call, ScriptedCompositor::activated);
    EXPECT_TRUE(waitUntil([&] { return frontmost() == "Chat"; }));
    compositor->setTitle(call, "Video call", ScriptedCompositor::Lists::wlr);
    compositor->setStates(call, ScriptedCompositor::minimized);
    EXPECT_TRUE(waitUntil([&] { return rows().empty(); }));
    EXPECT_EQ(frontmost(), "none");
    compositor->setStates(call, 0);
    awaitRows(1);
}

TEST_F(ExtDesktopTest, DoesWithoutTheListThatTellsTheStates) {
    compositor = std::make_unique<ScriptedCompositor>(ScriptedCompositor::Options{.tellsStates = false});
    const auto call = compositor->open({});
    connect();
    EXPECT_THAT(report, testing::HasSubstr("does not tell which window is in front"));
    const auto number = awaitRows(1);
    EXPECT_EQ(frontmost(), "none");
    EXPECT_TRUE(showsAll(number, call));
}

TEST_F(ExtDesktopTest, ShowsEveryChangeAndAsksForNothingWhileTheWindowStandsStill) {
    const auto call = compositor->open({});
    connect();
    const auto number = awaitRows(1);
    std::mt19937 chance{7}; // NOLINT: the fixed seed makes each run the same.
    const auto below = [&chance](int end) { return static_cast<int>(chance() % static_cast<unsigned>(end)); };
    for (int times = 0; times < 25; ++times) {
        for (int parts = below(3); parts >= 0; --parts)
            compositor->paint(call, {below(350), below(350), 1 + below(50), 1 + below(50)},
                              chance() & 0xffffff);
        ASSERT_TRUE(showsAll(number, call)) << times;
    }
    // The last change was taken by now. One more tick asks for a frame, which stays pending.
    std::this_thread::sleep_for(2 * tickInterval);
    capture(number);
    const auto before = compositor->framesAsked(call);
    for (int ticks = 0; ticks < 10; ++ticks) {
        const auto still = image;
        capture(number);
        EXPECT_EQ(image, still);
        std::this_thread::sleep_for(tickInterval);
    }
    EXPECT_LE(compositor->framesAsked(call), before + 1) << "The first may have been on its way.";
    EXPECT_EQ(compositor->openSessions(call), 1U);
    image.reset();
    EXPECT_TRUE(waitUntil([&] { return compositor->openSessions(call) == 0; })) << "The mirror has ended.";
}

TEST_F(ExtDesktopTest, AsksAtMostFifteenTimesASecondHoweverOftenTheWindowChanges) {
    const auto call = compositor->open({.width = 64, .height = 64});
    connect();
    const auto number = awaitRows(1);
    ASSERT_TRUE(capture(number));
    const auto before = compositor->framesAsked(call);
    const auto start = std::chrono::steady_clock::now();
    while (std::chrono::steady_clock::now() - start < 2s) {
        compositor->paint(call, {0, 0, 64, 64}, 0x808080);
        capture(number);
        std::this_thread::sleep_for(5ms);
    }
    EXPECT_LE(compositor->framesAsked(call) - before, 32);
}

TEST_F(ExtDesktopTest, FollowsANewSizeInEveryState) {
    const auto call = compositor->open({});
    connect();
    const auto number = awaitRows(1);
    struct Row {
        const char* description;
        std::function<void()> before;
        ScriptedCompositor::Resize order;
    };
    using Resize = ScriptedCompositor::Resize;
    const auto tick = [&] {
        capture(number);
        std::this_thread::sleep_for(tickInterval);
    };
    const Row rows[] = {
        {"before the first frame", [] {}, Resize::announceFirst},
        {"while a frame is pending",
         [&] {
             tick();
             tick();
         },
         Resize::announceFirst},
        {"while a frame is pending that fails first", tick, Resize::failFirst},
        {"while a frame is ready",
         [&] {
             tick();
             compositor->paint(call, {0, 0, 10, 10}, 0x123456);
         },
         Resize::announceFirst},
    };
    int width = 100;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.description);
        row.before();
        width += 90;
        compositor->resize(call, width, 300 - width / 2, 0x1000 + static_cast<std::uint32_t>(width),
                           row.order);
        EXPECT_TRUE(showsAll(number, call));
    }
    for (int times = 0; times < 30; ++times)
        compositor->resize(call, 50 + 7 * times, 60 + 5 * times, 0x40 + static_cast<std::uint32_t>(times));
    EXPECT_TRUE(showsAll(number, call));
    EXPECT_EQ(this->rows().front().bounds, (PixelRect{0, 0, 253, 205})) << "The list has another size.";
}

TEST_F(ExtDesktopTest, GoesOnAfterEveryFailure) {
    const auto call = compositor->open({});
    connect();
    const auto number = awaitRows(1);
    ASSERT_TRUE(showsAll(number, call));
    struct Row {
        const char* description;
        std::function<void()> failure;
    };
    const Row rows[] = {
        {"unknown",
         [&] {
             compositor->failFrames(call, {unknownReason, unknownReason});
         }},
        {"constraints that did not change", [&] { compositor->failFrames(call, {constraintsReason}); }},
        {"a session that only a frame says has ended",
         [&] { compositor->failFrames(call, {stoppedReason}); }},
        {"a session that ended", [&] { compositor->stopSessions(call, false); }},
        {"a session that ended, and its frame", [&] { compositor->stopSessions(call, true); }},
    };
    std::uint32_t colour = 0x102030;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.description);
        EXPECT_TRUE(capture(number));
        row.failure();
        EXPECT_TRUE(capture(number)) << "The last image stays.";
        compositor->paint(call, {10, 10, 100, 100}, colour += 0x101010);
        EXPECT_TRUE(showsAll(number, call));
        EXPECT_EQ(compositor->openSessions(call), 1U);
    }
}

TEST_F(ExtDesktopTest, FindsAWindowGoneInWhicheverOrderItsObjectsEnd) {
    using First = ScriptedCompositor::First;
    for (const auto order : {First::closed, First::stopped}) {
        const auto call = compositor->open({});
        connect();
        const auto number = awaitRows(1);
        ASSERT_TRUE(showsAll(number, call));
        compositor->close(call, order);
        EXPECT_TRUE(waitUntil([&] { return failureOf(number) == CaptureFailure::gone; }));
        EXPECT_TRUE(rows().empty());
        image.reset();
        EXPECT_TRUE(waitUntil([&] { return compositor->openSessions(call) == 0; }));
    }
}

TEST_F(ExtDesktopTest, SaysThatFramesCannotBeShown) {
    compositor->open({.formats = {0x36314752}}); // 16 bits a pixel.
    connect();
    EXPECT_EQ(failureOf(awaitRows(1)), CaptureFailure::reported);
}

} // namespace
} // namespace mirrolet::platform::desktop::wayland
