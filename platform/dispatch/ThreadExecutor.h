#pragma once

#include "platform/dispatch/Executor.h"

#include <memory>
#include <string>
#include <thread>

namespace mirrolet::platform::dispatch {

/// Runs its tasks on a thread of its own, which sleeps while there is nothing to do. The last 15 characters
/// of the label are the thread's name, as the kernel keeps no more.
class ThreadExecutor final : public Executor {
  public:
    explicit ThreadExecutor(const std::string& label);
    ~ThreadExecutor() override;

    void post(Task task) override;
    TimerNumber callAt(TimePoint deadline, Task task) override;
    void cancel(TimerNumber number) override;
    void shutDown() override;

    /// Returns when no thread runs a task. At the end of the program, once nobody posts any more: a task may
    /// be what keeps its queue, which then ends behind everybody's back. Not within a task.
    static void awaitTasks();

  private:
    struct State;
    static void run(const std::shared_ptr<State>& state);

    std::shared_ptr<State> state; ///< Shared with the thread, which may outlive this object.
    std::thread thread;
};

} // namespace mirrolet::platform::dispatch
