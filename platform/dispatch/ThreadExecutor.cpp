#include "platform/dispatch/ThreadExecutor.h"

#include "platform/dispatch/TaskList.h"
#include "platform/foundation/Mutex.h"

#include <atomic>
#include <cstddef>
#include <ctime>
#include <optional>
#include <pthread.h>
#include <semaphore.h>
#include <utility>

namespace mirrolet::platform::dispatch {

namespace {

constexpr std::size_t longestThreadName = 15;

/// Counts the tasks of all threads that have not ended yet. A timed task counts only from its deadline on.
class OpenTasks {
  public:
    void add() { ++count; }
    void remove(std::size_t ended) {
        if ((count -= ended) > 0)
            return;
        const MutexLock lock(waitMutex);
        noneLeft.notifyAll();
    }
    bool awaitNone(Executor::Clock::duration atMost) {
        const MutexLock lock(waitMutex);
        return noneLeft.waitFor(waitMutex, atMost, [this] { return count == 0; });
    }

  private:
    std::atomic<std::size_t> count = 0;
    /// remove() locks this mutex too. Otherwise remove() could notify after awaitNone() has checked the count
    /// but before awaitNone() sleeps, and the notification would be lost.
    Mutex waitMutex;
    ConditionVariable noneLeft;
};

/// The object is never destroyed, because a detached thread may end later than the program's static objects.
OpenTasks& openTasks() {
    static auto& tasks = *new OpenTasks;
    return tasks;
}

std::string threadName(const std::string& label) {
    return label.size() <= longestThreadName ? label : label.substr(label.size() - longestThreadName);
}

} // namespace

/// The state that an executor shares with its thread. The thread waits on a semaphore, because a condition
/// variable would cost one more system call at each tick of a timer.
struct ThreadExecutor::State {
    State() { sem_init(&signal, 0, 0); }
    ~State() { sem_destroy(&signal); }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    /// Waits for the next task and returns it. Returns nullptr once the executor is shut down.
    Task next() {
        while (true) {
            std::optional<Executor::TimePoint> deadline;
            {
                const MutexLock lock(taskMutex);
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

    /// Wakes the thread if it waits. If the wait has just timed out, the thread's next wait ends at once, and
    /// the thread looks for tasks once more than needed. This is harmless.
    void wake() MIRROLET_REQUIRES(taskMutex) {
        if (std::exchange(waiting, false))
            sem_post(&signal);
    }

    Mutex taskMutex;
    TaskList tasks MIRROLET_GUARDED_BY(taskMutex);
    bool stopped MIRROLET_GUARDED_BY(taskMutex) = false;

  private:
    /// Removes and returns the next task, or returns nullptr if there is none. openTasks() counts a timed
    /// task from here on, so that awaitTasks() waits for the task.
    Task takeNext() MIRROLET_REQUIRES(taskMutex) {
        auto due = tasks.takeDue(Clock::now());
        if (!due)
            return tasks.takePosted();
        openTasks().add();
        return due;
    }

    /// Waits until wake() is called or the deadline has come. Ends early if a signal handler interrupts the
    /// thread.
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
    bool waiting MIRROLET_GUARDED_BY(taskMutex) = false;
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
        // The task is destroyed right after its run, together with everything that it owns.
        std::exchange(task, nullptr)();
        openTasks().remove(1);
    }
}

bool ThreadExecutor::awaitTasks(Clock::duration atMost) {
    return openTasks().awaitNone(atMost);
}

void ThreadExecutor::post(Task task) {
    // `kept` keeps the mutex alive, because the posted task may run and destroy this executor before the
    // unlocking of the mutex has finished.
    const auto kept = state;
    const MutexLock lock(kept->taskMutex);
    if (kept->stopped)
        return;
    openTasks().add();
    kept->tasks.push(std::move(task));
    kept->wake();
}

Executor::TimerNumber ThreadExecutor::callAt(TimePoint deadline, Task task) {
    const auto kept = state;
    const MutexLock lock(kept->taskMutex);
    if (kept->stopped)
        return 0;
    const auto number = kept->tasks.pushAt(deadline, std::move(task));
    kept->wake();
    return number;
}

void ThreadExecutor::cancel(TimerNumber number) {
    Task dropped;
    const MutexLock lock(state->taskMutex);
    dropped = state->tasks.takeOut(number);
}

void ThreadExecutor::shutDown() {
    if (!thread.joinable())
        return;
    TaskList dropped;
    {
        const MutexLock lock(state->taskMutex);
        state->stopped = true;
        std::swap(dropped, state->tasks);
        state->wake();
    }
    openTasks().remove(dropped.postedCount());
    // A task of this queue may destroy the queue. A thread cannot wait for itself, so it is detached and ends
    // after that task.
    if (thread.get_id() == std::this_thread::get_id())
        thread.detach();
    else
        thread.join();
}

} // namespace mirrolet::platform::dispatch
