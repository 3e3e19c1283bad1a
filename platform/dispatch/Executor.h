#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace mirrolet::platform {
enum class DispatchQoS;
}

namespace mirrolet::platform::dispatch {

using Task = std::function<void()>;

/// Runs the tasks of one serial queue, one at a time, in the order of the posts. A task is destroyed right
/// after its run, on the same thread. All members may be called from any thread.
class Executor {
  public:
    using Clock = std::chrono::steady_clock;
    using TimePoint = Clock::time_point;
    using TimerNumber = std::uint64_t;

    virtual ~Executor() = default;
    virtual void post(Task task) = 0;
    /// Returns the present time of the clock that the deadlines refer to.
    [[nodiscard]] virtual TimePoint now() const { return Clock::now(); }
    /// Runs the task once, between two posted tasks, as soon as the deadline has come. Returns a number to
    /// pass to cancel(). No number is used twice. After shutDown(), drops the task and returns 0.
    virtual TimerNumber callAt(TimePoint deadline, Task task) = 0;
    /// Drops the task for which callAt() returned this number. Does nothing if the task has started or was
    /// cancelled.
    virtual void cancel(TimerNumber number) = 0;
    /// Drops all tasks that have not started, and starts none afterwards. Waits for the running task, unless
    /// that task is the caller.
    virtual void shutDown() = 0;
};

/// Converts seconds to a duration of the clock. The number may come from a file, so NaN, negative numbers and
/// numbers that are too large for the clock are allowed. The result is at least zero and at most some
/// decades.
[[nodiscard]] Executor::Clock::duration spanOf(double seconds);

/// Makes the executor of each queue. In the program, each queue has its own thread, and the main queue runs
/// on Qt's event loop. A test may set its own ExecutorSource with setCurrent().
class ExecutorSource {
  public:
    virtual ~ExecutorSource() = default;
    virtual std::shared_ptr<Executor> makeSerial(const std::string& label, DispatchQoS qos) = 0;
    virtual std::shared_ptr<Executor> main() = 0;

    static ExecutorSource& current();
    /// Makes `source` supply the executors from now on, for a test; nullptr restores the program's own
    /// ExecutorSource. Allowed only while no queue except the main queue exists.
    static void setCurrent(ExecutorSource* source);
};

} // namespace mirrolet::platform::dispatch
