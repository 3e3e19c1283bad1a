#include "platform/dispatch/DispatchQueue.h"

#include "platform/dispatch/DispatchSourceTimer.h"
#include "platform/dispatch/Executor.h"
#include "platform/dispatch/ThreadExecutor.h"
#include "platform/dispatch/fake/VirtualTime.h"
#include "platform/foundation/NSTimer.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <future>
#include <limits>
#include <mutex>
#include <numeric>
#include <pthread.h>
#include <thread>
#include <vector>

namespace mirrolet::platform {
namespace {

using namespace std::chrono_literals;
using Clock = dispatch::Executor::Clock;
using testing::ElementsAre;

constexpr auto deadline = 10s;

/// Runs the event loop until the condition holds or the deadline has passed.
bool loopUntil(const std::function<bool()>& condition) {
    const auto end = Clock::now() + deadline;
    while (!condition() && Clock::now() < end)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return condition();
}

/// Waits until all tasks that were posted to the queue have run.
void drain(DispatchQueue& queue) {
    std::promise<void> done;
    queue.async([&done] { done.set_value(); });
    ASSERT_EQ(done.get_future().wait_for(deadline), std::future_status::ready);
}

TEST(DispatchQueueTestOfSerialQueues, RunsOneTaskAtATimeInOrderOnAThreadOfItsName) {
    DispatchQueue queue("app.mirrolet.Mirrolet.windowMonitor");
    std::vector<int> order;
    std::string name(16, '\0');
    for (int number = 0; number < 1000; ++number)
        queue.async([&order, number] { order.push_back(number); });
    queue.async([&name] { pthread_getname_np(pthread_self(), name.data(), name.size()); });
    drain(queue);
    std::vector<int> expected(1000);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(order, expected);
    EXPECT_STREQ(name.c_str(), "t.windowMonitor");
}

TEST(DispatchQueueTestOfSerialQueues, LetsATaskGoOnItsThreadRightAfterItRan) {
    DispatchQueue queue("test");
    std::promise<std::thread::id> released;
    auto held = std::shared_ptr<int>(new int, [&released](const int* number) {
        delete number;
        released.set_value(std::this_thread::get_id());
    });
    queue.async([held = std::move(held)] {});
    auto thread = released.get_future();
    ASSERT_EQ(thread.wait_for(deadline), std::future_status::ready);
    EXPECT_NE(thread.get(), std::this_thread::get_id());
    drain(queue);
}

TEST(DispatchQueueTestOfSerialQueues, EndsInTheMiddleOfItsWork) {
    std::atomic<int> started = 0;
    {
        DispatchQueue queue("test");
        std::promise<void> running;
        queue.async([&] {
            ++started;
            running.set_value();
        });
        running.get_future().wait();
        auto& executor = *queue.executor();
        executor.callAt(Clock::now() + 1h, [&started] { ++started; });
    }
    EXPECT_EQ(started, 1);
}

TEST(DispatchQueueTestOfSerialQueues, CanBeLetGoByItsOwnTaskWhichCanBeAwaited) {
    auto queue = std::make_shared<DispatchQueue>("test");
    std::atomic<bool> released = false;
    std::shared_ptr<void> kept(nullptr, [&released](void*) {
        std::this_thread::sleep_for(50ms);
        released = true;
    });
    std::promise<void> begun;
    auto& posting = *queue;
    posting.async([queue = std::move(queue), kept = std::move(kept), &begun]() mutable {
        queue->async([] { FAIL() << "started after the queue was gone"; });
        queue.reset();
        begun.set_value();
    });
    ASSERT_EQ(begun.get_future().wait_for(deadline), std::future_status::ready);
    EXPECT_TRUE(dispatch::ThreadExecutor::awaitTasks(deadline));
    EXPECT_TRUE(released) << "what the task kept is let go before it counts as ended";
}

TEST(DispatchQueueTestOfSerialQueues, IsAwaitedForABoundedTimeAlsoIfItsTaskHasNotBegun) {
    DispatchQueue queue("test");
    std::promise<void> answer;
    queue.async([&answer] { answer.get_future().wait(); });
    EXPECT_FALSE(dispatch::ThreadExecutor::awaitTasks(1ms));
    bool second = false;
    queue.async([&second] {
        std::this_thread::sleep_for(20ms);
        second = true;
    });
    answer.set_value();
    EXPECT_TRUE(dispatch::ThreadExecutor::awaitTasks(deadline));
    EXPECT_TRUE(second);
    std::shared_ptr<dispatch::Executor> left;
    { // awaitTasks() does not wait for tasks that a destroyed queue drops.
        DispatchQueue dropping("test");
        left = dropping.executor();
        std::promise<void> begun;
        dropping.async([&begun] {
            begun.set_value();
            std::this_thread::sleep_for(20ms);
        });
        dropping.async([] {});
        begun.get_future().wait();
    }
    left->post([] { FAIL() << "started after the queue was gone"; });
    EXPECT_TRUE(dispatch::ThreadExecutor::awaitTasks(deadline));
}

TEST(DispatchQueueTestOfSerialQueues, RunsTimedTasksByDeadlineAndNoneThatWasCancelled) {
    DispatchQueue queue("test");
    auto& executor = *queue.executor();
    const auto start = Clock::now();
    std::vector<int> order;
    std::promise<Clock::time_point> last;
    executor.callAt(start + 40ms, [&] { last.set_value(Clock::now()); });
    const auto cancelled = executor.callAt(start + 30ms, [&] { order.push_back(30); });
    for (const int same : {20, 21, 22})
        executor.callAt(start + 20ms, [&order, same] { order.push_back(same); });
    executor.callAt(start + 10ms, [&] { order.push_back(10); });
    executor.cancel(cancelled);
    executor.cancel(cancelled);
    EXPECT_GE(last.get_future().get(), start + 40ms);
    drain(queue);
    EXPECT_THAT(order, ElementsAre(10, 20, 21, 22));
}

TEST(DispatchQueueTestOfSerialQueues, ATimerIsCancelledFromAnyThreadWhileItFires) {
    DispatchQueue queue("test");
    std::atomic<int> firings = 0;
    auto timer = DispatchSourceTimer::make(queue);
    timer->scheduleNow(0.01);
    timer->setEventHandler([&firings] { ++firings; });
    timer->resume();
    const auto end = Clock::now() + deadline;
    while (firings < 3 && Clock::now() < end)
        std::this_thread::yield();
    timer->cancel();
    drain(queue); // The timer may still be firing.
    const int last = firings;
    EXPECT_GE(last, 3);
    std::promise<void> later;
    queue.executor()->callAt(Clock::now() + 30ms, [&later] { later.set_value(); });
    later.get_future().wait();
    EXPECT_EQ(firings, last);
}

class DispatchQueueTestOfTimers : public testing::Test {
  protected:
    dispatch::VirtualTime time;
    DispatchQueue queue{"test"};
    dispatch::Executor::TimePoint start = queue.executor()->now();
    std::vector<long> firings; ///< The times of the firings, in milliseconds since `start`.

    void note() { firings.push_back((queue.executor()->now() - start) / 1ms); }

    std::shared_ptr<DispatchSourceTimer> startTimer(double interval, std::function<void()> handler) {
        auto timer = DispatchSourceTimer::make(queue);
        timer->scheduleNow(interval);
        timer->setEventHandler(std::move(handler));
        timer->resume();
        return timer;
    }
};

TEST_F(DispatchQueueTestOfTimers, FiresAtOnceAndThenOnDeadlinesThatDoNotDrift) {
    startTimer(0.1, [this] {
        note();
        time.advance(0.03); // The timer's handler takes 30 ms.
    })->resume();           // A second resume() changes nothing.
    time.advance(0.35);
    EXPECT_THAT(firings, ElementsAre(0, 100, 200, 300)) << "also after its owner has let it go";
}

TEST_F(DispatchQueueTestOfTimers, FoldsMissedFiringsIntoOne) {
    startTimer(0.1, [this] {
        note();
        if (firings.size() == 1)
            time.advance(0.35);
    });
    time.advance(0.5);
    EXPECT_THAT(firings, ElementsAre(0, 350, 400, 500));
}

TEST_F(DispatchQueueTestOfTimers, CancelledByItsOwnHandlerItNeverFiresAgainAndFreesTheHandler) {
    std::weak_ptr<DispatchSourceTimer> weak;
    {
        const auto timer = std::make_shared<std::shared_ptr<DispatchSourceTimer>>();
        *timer = startTimer(0.1, [this, timer] {
            note();
            (*timer)->cancel();
        });
        weak = *timer;
    }
    time.advance(1);
    EXPECT_THAT(firings, ElementsAre(0));
    EXPECT_TRUE(weak.expired());
}

TEST_F(DispatchQueueTestOfTimers, AnIntervalThatIsNoIntervalNeitherSpinsNorOverflows) {
    const std::pair<double, std::size_t> rows[] = {
        {0, 101},
        {-5, 101},
        {std::nan(""), 101},
        {1e-30, 101},
        {std::numeric_limits<double>::infinity(), 1},
        {1e300, 1},
    };
    for (const auto& [interval, count] : rows) {
        firings.clear();
        const auto timer = startTimer(interval, [this] { note(); });
        time.advance(1);
        timer->cancel();
        EXPECT_EQ(firings.size(), count) << interval;
    }
}

TEST(DispatchQueueTestOfTheMainQueue, RunsPostsOfOtherThreadsInTheirOrderOnTheMainThread) {
    std::vector<int> order;
    bool onMain = true;
    {
        DispatchQueue other("test");
        other.async([&] {
            for (int number = 0; number < 100; ++number) {
                DispatchQueue::main().async([&order, &onMain, number, main = pthread_self()] {
                    order.push_back(number);
                    onMain = onMain && !pthread_equal(pthread_self(), main);
                });
            }
        });
        ASSERT_TRUE(loopUntil([&order] { return order.size() == 100; }));
    }
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    EXPECT_TRUE(onMain);
}

TEST(DispatchQueueTestOfTheMainQueue, ALoopInsideATaskDoesNotHoldUpTheTasksBehindIt) {
    std::vector<int> order;
    bool done = false;
    DispatchQueue::main().async([&] {
        order.push_back(1);
        EXPECT_TRUE(loopUntil([&order] { return order.size() == 3; }));
        order.push_back(4);
        done = true;
    });
    DispatchQueue::main().async([&] {
        order.push_back(2);
        DispatchQueue::main().async([&] { order.push_back(3); });
    });
    EXPECT_TRUE(loopUntil([&done] { return done; }));
    EXPECT_THAT(order, ElementsAre(1, 2, 3, 4));
}

TEST(DispatchQueueTestOfTheMainQueue, AOneShotTimerFiresOnceNeverEarlyAndNotAfterItsEnd) {
    std::vector<int> fired;
    const auto start = Clock::now();
    Clock::duration after{};
    NSTimer::scheduledTimer(0.03, [&] {
        fired.push_back(30);
        after = Clock::now() - start;
    });
    NSTimer::scheduledTimer(0.01, [&] { fired.push_back(10); });
    EXPECT_TRUE(loopUntil([&fired] { return fired.size() == 2; }));
    EXPECT_THAT(fired, ElementsAre(10, 30));
    EXPECT_GE(after, 30ms);
    // An invalidated timer makes the main queue set its next wake-up time anew. The other timer still has to
    // fire.
    const auto invalidated = NSTimer::scheduledTimer(0.01, [&] { fired.push_back(11); });
    NSTimer::scheduledTimer(0.02, [&] { fired.push_back(20); });
    invalidated->invalidate();
    invalidated->invalidate();
    EXPECT_TRUE(loopUntil([&fired] { return fired.size() == 3; }));
    EXPECT_THAT(fired, ElementsAre(10, 30, 20));
}

} // namespace
} // namespace mirrolet::platform
