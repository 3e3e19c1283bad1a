#include "platform/dispatch/ThreadExecutor.h"

#include "platform/dispatch/TaskList.h"

#include <condition_variable>
#include <mutex>
#include <pthread.h>
#include <utility>

namespace mirrolet::platform::dispatch {

namespace {

constexpr std::size_t longestThreadName = 15;

std::string threadName(const std::string& label) {
    return label.size() <= longestThreadName ? label : label.substr(label.size() - longestThreadName);
}

} // namespace

struct ThreadExecutor::State {
    std::mutex mutex;
    std::condition_variable changed;
    TaskList tasks;
    bool stopped = false;

    /// Waits for the next task; nullptr once stopped.
    Task next() {
        std::unique_lock lock(mutex);
        while (!stopped) {
            if (auto task = tasks.takeNext(Clock::now()))
                return task;
            if (const auto deadline = tasks.firstDeadline())
                changed.wait_until(lock, *deadline);
            else
                changed.wait(lock);
        }
        return nullptr;
    }
};

ThreadExecutor::ThreadExecutor(const std::string& label) : state(std::make_shared<State>()) {
    thread = std::thread([state = state, name = threadName(label)] {
        pthread_setname_np(pthread_self(), name.c_str());
        run(state);
    });
}

ThreadExecutor::~ThreadExecutor() {
    ThreadExecutor::shutDown();
}

void ThreadExecutor::run(const std::shared_ptr<State>& state) {
    while (auto task = state->next())
        task();
}

void ThreadExecutor::post(Task task) {
    const auto kept = state; // The task may let this executor go before the thread is told of it.
    {
        const std::lock_guard lock(kept->mutex);
        if (kept->stopped)
            return;
        kept->tasks.push(std::move(task));
    }
    kept->changed.notify_one();
}

Executor::TimerNumber ThreadExecutor::callAt(TimePoint deadline, Task task) {
    const auto kept = state;
    TimerNumber number = 0;
    {
        const std::lock_guard lock(kept->mutex);
        if (kept->stopped)
            return 0;
        number = kept->tasks.pushAt(deadline, std::move(task));
    }
    kept->changed.notify_one();
    return number;
}

void ThreadExecutor::cancel(TimerNumber number) {
    Task dropped;
    const std::lock_guard lock(state->mutex);
    dropped = state->tasks.takeOut(number);
}

void ThreadExecutor::shutDown() {
    if (!thread.joinable())
        return;
    TaskList dropped;
    {
        const std::lock_guard lock(state->mutex);
        state->stopped = true;
        std::swap(dropped, state->tasks);
    }
    state->changed.notify_one();
    // A task of this very queue may hold the queue's last owner: the thread then ends by itself after that
    // task.
    if (thread.get_id() == std::this_thread::get_id())
        thread.detach();
    else
        thread.join();
}

} // namespace mirrolet::platform::dispatch
