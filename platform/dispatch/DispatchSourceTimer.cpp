#include "platform/dispatch/DispatchSourceTimer.h"

#include "platform/dispatch/Executor.h"

#include <algorithm>
#include <chrono>
#include <mutex>
#include <utility>

namespace mirrolet::platform {

using dispatch::Executor;

namespace {
// The least interval in seconds. Intervals come from a file that people edit, and a shorter one would use the
// whole processor.
constexpr double shortestInterval = 0.01;
} // namespace

struct DispatchSourceTimer::State : std::enable_shared_from_this<State> {
    explicit State(std::weak_ptr<Executor> executor) : executor(std::move(executor)) {}

    void start() {
        const std::lock_guard lock(stateMutex);
        const auto target = executor.lock();
        if (!target || cancelled || pending != 0 || interval <= interval.zero())
            return; // Never scheduled, already running, or without a queue.
        begin = target->now();
        arm(*target, begin);
    }

    void cancel() {
        std::shared_ptr<const std::function<void()>> dropped; // Released after the lock.
        Executor::TimerNumber number = 0;
        {
            const std::lock_guard lock(stateMutex);
            cancelled = true;
            dropped = std::exchange(handler, nullptr);
            number = std::exchange(pending, 0);
        }
        if (const auto target = executor.lock())
            target->cancel(number);
    }

    std::mutex stateMutex;
    std::weak_ptr<Executor> executor; ///< Weak, because the executor's tasks own this state.
    std::shared_ptr<const std::function<void()>> handler;
    Executor::Clock::duration interval{};
    Executor::TimePoint begin;
    Executor::TimerNumber pending = 0;
    bool cancelled = false;

  private:
    // The caller holds the lock.
    void arm(Executor& target, Executor::TimePoint deadline) {
        pending = target.callAt(deadline, [self = shared_from_this()] { self->fire(); });
    }

    void fire() {
        const auto target = executor.lock();
        if (!target)
            return;
        // This firing stands for all deadlines up to now. The next firing is at the first deadline after now.
        const auto now = target->now();
        if (const auto current = currentHandler())
            (*current)();
        const std::lock_guard lock(stateMutex);
        if (!cancelled)
            arm(*target, begin + ((now - begin) / interval + 1) * interval);
    }

    std::shared_ptr<const std::function<void()>> currentHandler() {
        const std::lock_guard lock(stateMutex);
        return cancelled ? nullptr : handler;
    }
};

DispatchSourceTimer::DispatchSourceTimer(std::shared_ptr<State> state) : state(std::move(state)) {}

std::shared_ptr<DispatchSourceTimer> DispatchSourceTimer::make(const DispatchQueue& queue) {
    auto state = std::make_shared<State>(queue.executor());
    return std::shared_ptr<DispatchSourceTimer>(new DispatchSourceTimer(std::move(state)));
}

void DispatchSourceTimer::scheduleNow(double repeating) {
    const std::lock_guard lock(state->stateMutex);
    state->interval = std::max(dispatch::spanOf(repeating), dispatch::spanOf(shortestInterval));
}

void DispatchSourceTimer::setEventHandler(std::function<void()> handler) {
    const std::lock_guard lock(state->stateMutex);
    state->handler = std::make_shared<const std::function<void()>>(std::move(handler));
}

void DispatchSourceTimer::resume() {
    state->start();
}

void DispatchSourceTimer::cancel() {
    state->cancel();
}

} // namespace mirrolet::platform
