#include "platform/dispatch/DispatchSourceTimer.h"

#include "platform/dispatch/Executor.h"
#include "platform/foundation/Mutex.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace mirrolet::platform {

using dispatch::Executor;

namespace {
// The shortest interval in seconds. Intervals come from a file that people edit, and a shorter interval would
// use the whole processor.
constexpr double shortestInterval = 0.01;
} // namespace

struct DispatchSourceTimer::State : std::enable_shared_from_this<State> {
    explicit State(std::weak_ptr<Executor> executor) : executor(std::move(executor)) {}

    void start() {
        const MutexLock lock(stateMutex);
        const auto target = executor.lock();
        // The timer does not start if its queue is gone, or if the timer was cancelled, runs already or has
        // no interval.
        if (!target || cancelled || pending != 0 || interval <= interval.zero())
            return;
        begin = target->now();
        arm(*target, begin);
    }

    void cancel() {
        // The handler is destroyed after the mutex is unlocked, because its destructor may run any code, even
        // code that locks the mutex.
        std::shared_ptr<const std::function<void()>> dropped;
        Executor::TimerNumber number = 0;
        {
            const MutexLock lock(stateMutex);
            cancelled = true;
            dropped = std::exchange(handler, nullptr);
            number = std::exchange(pending, 0);
        }
        if (const auto target = executor.lock())
            target->cancel(number);
    }

    Mutex stateMutex;
    std::weak_ptr<Executor> executor; ///< Weak, because the executor's tasks already own this state.
    std::shared_ptr<const std::function<void()>> handler MIRROLET_GUARDED_BY(stateMutex);
    Executor::Clock::duration interval MIRROLET_GUARDED_BY(stateMutex){};
    Executor::TimePoint begin MIRROLET_GUARDED_BY(stateMutex);
    Executor::TimerNumber pending MIRROLET_GUARDED_BY(stateMutex) = 0;
    bool cancelled MIRROLET_GUARDED_BY(stateMutex) = false;

  private:
    void arm(Executor& target, Executor::TimePoint deadline) MIRROLET_REQUIRES(stateMutex) {
        pending = target.callAt(deadline, [self = shared_from_this()] { self->fire(); });
    }

    void fire() {
        const auto target = executor.lock();
        if (!target)
            return;
        // The handler runs once, even if several deadlines have passed. The timer fires next at the first
        // deadline after `now`.
        const auto now = target->now();
        if (const auto current = currentHandler())
            (*current)();
        const MutexLock lock(stateMutex);
        if (!cancelled)
            arm(*target, begin + ((now - begin) / interval + 1) * interval);
    }

    std::shared_ptr<const std::function<void()>> currentHandler() {
        const MutexLock lock(stateMutex);
        return cancelled ? nullptr : handler;
    }
};

DispatchSourceTimer::DispatchSourceTimer(std::shared_ptr<State> state) : state(std::move(state)) {}

std::shared_ptr<DispatchSourceTimer> DispatchSourceTimer::make(const DispatchQueue& queue) {
    auto state = std::make_shared<State>(queue.executor());
    return std::shared_ptr<DispatchSourceTimer>(new DispatchSourceTimer(std::move(state)));
}

void DispatchSourceTimer::scheduleNow(double repeating) {
    const MutexLock lock(state->stateMutex);
    state->interval = std::max(dispatch::spanOf(repeating), dispatch::spanOf(shortestInterval));
}

void DispatchSourceTimer::setEventHandler(std::function<void()> handler) {
    const MutexLock lock(state->stateMutex);
    state->handler = std::make_shared<const std::function<void()>>(std::move(handler));
}

void DispatchSourceTimer::resume() {
    state->start();
}

void DispatchSourceTimer::cancel() {
    state->cancel();
}

} // namespace mirrolet::platform
