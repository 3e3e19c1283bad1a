#include "platform/dispatch/DispatchSourceTimer.h"

#include "platform/dispatch/Executor.h"

#include <algorithm>
#include <chrono>
#include <mutex>
#include <utility>

namespace mirrolet::platform {

using dispatch::Executor;

namespace {
// Intervals come from a file that people edit; below this one, a timer would only heat the machine.
constexpr double shortestInterval = 0.01;
} // namespace

struct DispatchSourceTimer::State : std::enable_shared_from_this<State> {
    explicit State(std::weak_ptr<Executor> executor) : executor(std::move(executor)) {}

    void start() {
        const std::lock_guard lock(mutex);
        const auto target = executor.lock();
        if (!target || cancelled || pending != 0 || interval <= interval.zero())
            return; // Never scheduled, running already, or nothing left to run on.
        begin = target->now();
        arm(*target, begin);
    }

    void cancel() {
        std::shared_ptr<const std::function<void()>> dropped; // Let go without the lock.
        Executor::TimerNumber number = 0;
        {
            const std::lock_guard lock(mutex);
            cancelled = true;
            dropped = std::exchange(handler, nullptr);
            number = std::exchange(pending, 0);
        }
        if (const auto target = executor.lock())
            target->cancel(number);
    }

    std::mutex mutex;
    std::weak_ptr<Executor> executor; ///< The executor holds this, not the other way round.
    std::shared_ptr<const std::function<void()>> handler;
    Executor::Clock::duration interval{};
    Executor::TimePoint begin;
    Executor::TimerNumber pending = 0;
    bool cancelled = false;

  private:
    // With the lock held.
    void arm(Executor& target, Executor::TimePoint deadline) {
        pending = target.callAt(deadline, [self = shared_from_this()] { self->fire(); });
    }

    void fire() {
        const auto target = executor.lock();
        if (!target)
            return;
        // This firing stands for every deadline up to now; the next one is the first deadline after it.
        const auto now = target->now();
        if (const auto current = currentHandler())
            (*current)();
        const std::lock_guard lock(mutex);
        if (!cancelled)
            arm(*target, begin + ((now - begin) / interval + 1) * interval);
    }

    std::shared_ptr<const std::function<void()>> currentHandler() {
        const std::lock_guard lock(mutex);
        return cancelled ? nullptr : handler;
    }
};

DispatchSourceTimer::DispatchSourceTimer(std::shared_ptr<State> state) : state(std::move(state)) {}

std::shared_ptr<DispatchSourceTimer> DispatchSourceTimer::make(const DispatchQueue& queue) {
    auto state = std::make_shared<State>(queue.executor());
    return std::shared_ptr<DispatchSourceTimer>(new DispatchSourceTimer(std::move(state)));
}

void DispatchSourceTimer::scheduleNow(double repeating) {
    const std::lock_guard lock(state->mutex);
    state->interval = std::max(dispatch::spanOf(repeating), dispatch::spanOf(shortestInterval));
}

void DispatchSourceTimer::setEventHandler(std::function<void()> handler) {
    const std::lock_guard lock(state->mutex);
    state->handler = std::make_shared<const std::function<void()>>(std::move(handler));
}

void DispatchSourceTimer::resume() {
    state->start();
}

void DispatchSourceTimer::cancel() {
    state->cancel();
}

} // namespace mirrolet::platform
