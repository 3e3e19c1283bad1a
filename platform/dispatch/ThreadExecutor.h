#pragma once

#include "platform/dispatch/Executor.h"

#include <memory>
#include <string>
#include <thread>

namespace mirrolet::platform::dispatch {

/// Runs its tasks on a thread of its own, which sleeps while there is nothing to do. The thread's name is the
/// last 15 characters of the label, because the kernel keeps no more.
class ThreadExecutor final : public Executor {
  public:
    explicit ThreadExecutor(const std::string& label);
    ~ThreadExecutor() override;

    void post(Task task) override;
    TimerNumber callAt(TimePoint deadline, Task task) override;
    void cancel(TimerNumber number) override;
    void shutDown() override;

    /// Waits until every task that was posted to any thread has ended; returns false if some still run after
    /// `atMost`. A timed task counts only once its thread has taken it to run. Called at the end of the
    /// program: a queue's destructor waits for its running task, but not if that task itself destroys the
    /// queue. Such a task may still run when its queue is gone. Must not be called by a task.
    static bool awaitTasks(Clock::duration atMost);

  private:
    struct State;
    static void run(const std::shared_ptr<State>& state);

    std::shared_ptr<State> state; ///< Shared with the thread, which may outlive this object.
    std::thread thread;
};

} // namespace mirrolet::platform::dispatch
