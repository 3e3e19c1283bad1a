#include "platform/desktop/wayland/ext/CaptureStateMachine.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace mirrolet::platform::desktop::wayland {
namespace {

using namespace std::chrono_literals;
using Failure = CaptureStateMachine::Failure;
using Request = CaptureStateMachine::Request;

// Values of wl_shm.format.
constexpr std::uint32_t argb8888 = 0;
constexpr std::uint32_t xrgb8888 = 1;
constexpr std::uint32_t rgb565 = 0x36314752;

constexpr auto tick = 67ms;

class CaptureStateMachineTest : public testing::Test {
  protected:
    void announce(PixelSize size, const std::vector<std::uint32_t>& formats = {xrgb8888}) {
        machine.bufferSize(size);
        for (const auto format : formats)
            machine.shmFormat(format);
        machine.constraintsDone();
    }
    void open(PixelSize size = {640, 400}) {
        machine.opened();
        announce(size);
    }
    std::optional<Request> ask() { return machine.nextRequest(now); }
    /// Lets the pending frame come, and reads it.
    std::optional<std::size_t> show(const PixelRect& damage) {
        machine.damaged(damage);
        machine.ready();
        const auto taken = machine.take();
        now += tick;
        return taken;
    }
    /// Returns after how long the next frame is asked for, or none if it is not asked for within a minute.
    std::optional<std::chrono::milliseconds> askedAfter() {
        for (auto waited = 0ms; waited < 60s; waited += 1ms, now += 1ms)
            if (ask())
                return waited;
        return std::nullopt;
    }

    CaptureStateMachine machine;
    CaptureStateMachine::TimePoint now{1h};
};

TEST_F(CaptureStateMachineTest, AsksForOneFrameAtATimeAndForNoneOfAStillWindow) {
    EXPECT_TRUE(machine.isSessionDue(now));
    machine.opened();
    EXPECT_FALSE(machine.isSessionDue(now));
    EXPECT_FALSE(ask()) << "The constraints are not known.";
    machine.bufferSize({640, 400});
    machine.shmFormat(xrgb8888);
    EXPECT_FALSE(ask()) << "The constraints are not complete.";
    machine.constraintsDone();
    const auto first = ask();
    ASSERT_TRUE(first);
    EXPECT_TRUE(first->isNew);
    EXPECT_EQ(first->size, (PixelSize{640, 400}));
    EXPECT_EQ(first->format, xrgb8888);
    EXPECT_EQ(first->damage, (PixelRect{0, 0, 640, 400}));
    EXPECT_EQ(askedAfter(), std::nullopt) << "The frame comes when the window changes.";
    machine.ready();
    EXPECT_EQ(askedAfter(), std::nullopt) << "Nobody has taken the frame.";
    EXPECT_EQ(machine.take(), first->buffer);
    EXPECT_EQ(machine.take(), std::nullopt);
}

TEST_F(CaptureStateMachineTest, AsksAtMostFifteenTimesASecond) {
    open();
    int asked = 0;
    for (const auto end = now + 10s; now < end; now += 1ms)
        if (ask()) {
            ++asked;
            machine.ready();
            machine.take();
        }
    EXPECT_NEAR(asked, 150, 1);
}

TEST_F(CaptureStateMachineTest, KeepsPaceWithTicksThatAreNotExact) {
    open();
    int asked = 0;
    for (int i = 0; i < 150; ++i) {
        asked += ask() ? 1 : 0;
        machine.ready();
        machine.take();
        now += i % 2 == 0 ? 50ms : 83ms;
    }
    EXPECT_GE(asked, 148);
}

TEST_F(CaptureStateMachineTest, HandsInWhatHasChangedSinceTheBufferWasFilled) {
    open({100, 100});
    const auto first = ask();
    ASSERT_EQ(show({0, 0, 100, 100}), first->buffer); // The first buffer is being read from now on.
    const auto second = ask();
    ASSERT_TRUE(second);
    EXPECT_NE(second->buffer, first->buffer);
    EXPECT_TRUE(second->isNew);
    EXPECT_EQ(second->damage, (PixelRect{0, 0, 100, 100}));
    machine.release();
    show({10, 10, 5, 5});
    const auto third = ask();
    EXPECT_EQ(third->buffer, first->buffer);
    EXPECT_FALSE(third->isNew);
    EXPECT_EQ(third->damage, (PixelRect{10, 10, 5, 5}));
    show({20, 20, 300, 5});
    machine.release();
    const auto fourth = ask();
    EXPECT_EQ(fourth->buffer, first->buffer) << "Least has changed since this buffer was filled.";
    EXPECT_EQ(fourth->damage, PixelRect{});
    show({});
    EXPECT_EQ(ask()->damage, (PixelRect{0, 0, 100, 100})) << "A frame without damage says nothing.";
}

TEST_F(CaptureStateMachineTest, TakesANewSizeInEveryState) {
    const PixelSize larger{800, 600};
    const auto fails = [&] { machine.failed(Failure::constraints, now); };
    struct Row {
        const char* description;
        std::function<void()> events;
    };
    const Row rows[] = {
        {"before the first frame", [&] { announce(larger); }},
        {"while a frame is pending, which then fails",
         [&] {
             ask();
             announce(larger);
             fails();
         }},
        {"after the frame failed",
         [&] {
             ask();
             fails();
             EXPECT_FALSE(ask()) << "A buffer of the old size would fail again.";
             announce(larger);
         }},
        {"while a frame is pending, which still comes",
         [&] {
             ask();
             announce(larger);
             show({0, 0, 640, 400});
         }},
        {"while a frame is ready",
         [&] {
             ask();
             machine.ready();
             announce(larger);
             machine.take();
         }},
        {"while a frame is being read",
         [&] {
             ask();
             machine.ready();
             machine.take();
             announce(larger);
         }},
        {"again and again",
         [&] {
             ask();
             for (int width = 700; width < 800; width += 10) {
                 announce({width, 500});
                 fails();
                 now += tick;
                 ask();
             }
             announce(larger);
             fails();
         }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.description);
        machine = {};
        open();
        row.events();
        now += tick;
        const auto request = ask();
        ASSERT_TRUE(request);
        EXPECT_TRUE(request->isNew);
        EXPECT_EQ(request->size, larger);
        EXPECT_EQ(request->damage, (PixelRect{0, 0, 800, 600}));
    }
}

TEST_F(CaptureStateMachineTest, WaitsLongerAfterEachFailureUntilAFrameComes) {
    open();
    for (const auto pause : std::vector<std::chrono::milliseconds>{250ms, 500ms, 1s, 2s, 4s, 8s, 16s, 16s}) {
        ask();
        machine.failed(Failure::unknown, now);
        EXPECT_EQ(askedAfter(), pause);
    }
    show({});
    ask();
    machine.failed(Failure::unknown, now);
    EXPECT_EQ(askedAfter(), 250ms);
    machine.failed(Failure::constraints, now); // The session has announced nothing else.
    EXPECT_EQ(askedAfter(), 500ms);
}

TEST_F(CaptureStateMachineTest, OpensAStoppedSessionAgainAfterAWhile) {
    struct Row {
        const char* description;
        std::function<void()> events;
    };
    const Row rows[] = {
        {"stopped alone", [&] { machine.stopped(now); }},
        {"a frame failed before",
         [&] {
             machine.failed(Failure::stopped, now);
             machine.stopped(now);
         }},
        {"a frame failed after",
         [&] {
             machine.stopped(now);
             machine.failed(Failure::stopped, now);
         }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.description);
        machine = {};
        open();
        ask();
        row.events();
        EXPECT_FALSE(machine.isSessionDue(now));
        EXPECT_FALSE(machine.isRequestDue(now + 1min));
        now += 250ms;
        EXPECT_TRUE(machine.isSessionDue(now));
        open();
        const auto request = ask();
        ASSERT_TRUE(request);
        EXPECT_EQ(request->damage, (PixelRect{0, 0, 640, 400}));
    }
}

TEST_F(CaptureStateMachineTest, KeepsAFrameThatCameBeforeTheSessionStopped) {
    open();
    ask();
    machine.ready();
    machine.stopped(now);
    EXPECT_TRUE(machine.take());
}

TEST_F(CaptureStateMachineTest, AsksOnlyForFramesThatCanBeShown) {
    struct Row {
        const char* description;
        PixelSize size;
        std::vector<std::uint32_t> formats;
        std::optional<std::uint32_t> format;
    };
    const Row rows[] = {
        {"both formats", {10, 10}, {argb8888, xrgb8888, rgb565}, xrgb8888},
        {"in another order", {10, 10}, {xrgb8888, argb8888}, xrgb8888},
        {"with transparency", {10, 10}, {rgb565, argb8888}, argb8888},
        {"16 bits a pixel", {10, 10}, {rgb565}, std::nullopt},
        {"graphics memory only", {10, 10}, {}, std::nullopt},
        {"no size", {0, 10}, {xrgb8888}, std::nullopt},
        {"more bytes than a buffer can have", {32767, 32767}, {xrgb8888}, std::nullopt},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.description);
        machine = {};
        machine.opened();
        announce(row.size, row.formats);
        EXPECT_EQ(machine.isUnusable(), !row.format);
        const auto request = ask();
        EXPECT_EQ(request ? std::optional(request->format) : std::nullopt, row.format);
    }
    announce({10, 10});
    EXPECT_TRUE(ask()) << "The window can be shown now.";
}

} // namespace
} // namespace mirrolet::platform::desktop::wayland
