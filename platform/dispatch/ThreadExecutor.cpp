#include "platform/dispatch/ThreadExecutor.h"

#include "platform/dispatch/TaskList.h"

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <ctime>
#include <mutex>
#include <optional>
#include <pthread.h>
#include <semaphore.h>
#include <utility>

namespace mirrolet::platform::dispatch {

namespace {

constexpr std::size_t longestThreadName = 15;

/// Counts the tasks of all threads that were posted, or taken at their deadline, and have not ended yet.
class OpenTasks {
  public:
    void add() { ++count; }
    void remove(std::size_t ended) {
        if ((count -= ended) > 0)
            return;
        const std::lock_guard lock(waitMutex);
        noneLeft.notify_all();
    }
    bool awaitNone(Executor::Clock::duration atMost) {
        std::unique_lock lock(waitMutex);
        return noneLeft.wait_for(lock, atMost, [this] { return count == 0; });
    }

  private:
    std::atomic<std::size_t> count = 0;
    std::mutex waitMutex; ///< Held while the waiting thread looks at the count and goes to sleep.
    std::condition_variable noneLeft;
};

/// Never destroyed, because a detached thread may end later than the program's static objects.
OpenTasks& openTasks() {
    static auto& tasks = *new OpenTasks;
    return tasks;
}

std::string threadName(const std::string& label) {
    return label.size() <= longestThreadName ? label : label.substr(label.size() - longestThreadName);
}

} // namespace

/// The thread waits on a semaphore rather than on a condition variable: after a wait that ends by time, the
/// latter takes its mutex as a contended one, which costs a system call on each tick of a timer.
struct ThreadExecutor::State {
    State() { sem_init(&signal, 0, 0); }
    ~State() { sem_destroy(&signal); }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    /// Waits for the next task; nullptr once stopped.
    Task next() {
        while (true) {
            std::optional<Executor::TimePoint> deadline;
            {
                const std::lock_guard lock(mutex);
                waiting = false;
                if (stopped)
                    return nullptr;
                if (auto task = takeNext())
                    return task;
                deadline = tasks.firstDeadline();
                waiting = true;
            }
            wait(deadline);
        }
    }

    /// With the lock held. A signal that comes when the wait has just ended by time makes one more turn.
    void wake() {
        if (std::exchange(waiting, false))
            sem_post(&signal);
    }

    std::mutex mutex;
    TaskList tasks;
    bool stopped = false;

  private:
    /// A timed task counts as open from now on, so that whoever cancels it either stops it or can wait for
    /// it.
    Task takeNext() {
        auto due = tasks.takeDue(Clock::now());
        if (!due)
            return tasks.takePosted();
        openTasks().add();
        return due;
    }

    /// Ends early at any signal to the process.
    void wait(const std::optional<Executor::TimePoint>& deadline) {
        if (!deadline) {
            sem_wait(&signal);
            return;
        }
        const auto time = deadline->time_since_epoch();
        const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
        const timespec end{static_cast<std::time_t>(seconds.count()),
                           static_cast<long>(std::chrono::nanoseconds(time - seconds).count())};
        sem_clockwait(&signal, CLOCK_MONOTONIC, &end);
    }

    sem_t signal{};
    bool waiting = false;
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
    while (auto task = state->next()) {
        std::exchange(task, nullptr)(); // And lets it go, with what it keeps.
        openTasks().remove(1);
    }
}

bool ThreadExecutor::awaitTasks(Clock::duration atMost) {
    return openTasks().awaitNone(atMost);
}

void ThreadExecutor::post(Task task) {
    const auto kept = state; // The task may let this executor go before the lock is free again.
    const std::lock_guard lock(kept->mutex);
    if (kept->stopped)
        return;
    openTasks().add();
    kept->tasks.push(std::move(task));
    kept->wake();
}

Executor::TimerNumber ThreadExecutor::callAt(TimePoint deadline, Task task) {
    const auto kept = state;
    const std::lock_guard lock(kept->mutex);
    if (kept->stopped)
        return 0;
    const auto number = kept->tasks.pushAt(deadline, std::move(task));
    kept->wake();
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
        state->wake();
    }
    openTasks().remove(dropped.postedCount());
    // A task of this very queue may hold the queue's last owner: the thread then ends by itself after that
    // task.
    if (thread.get_id() == std::this_thread::get_id())
        thread.detach();
    else
        thread.join();
}

} // namespace mirrolet::platform::dispatch
