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

/// Runs the tasks of one serial queue, one at a time, in the order of the posts. A task is released right
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
    /// Runs the task once, between two posted tasks, as soon as the deadline has come or passed. The number
    /// is never used twice. After shutDown() the task is dropped and the number is 0.
    virtual TimerNumber callAt(TimePoint deadline, Task task) = 0;
    /// Forgets a timed task that has not started. Does nothing if the task ran or was cancelled.
    virtual void cancel(TimerNumber number) = 0;
    /// Drops all tasks that have not started, and starts none afterwards. Waits for the running task, unless
    /// that task is the caller.
    virtual void shutDown() = 0;
};

/// Converts seconds to a span of the clock. The number may come from a file, so NaN, negative numbers and
/// numbers that the clock cannot hold are allowed. The result lies between zero and some decades.
[[nodiscard]] Executor::Clock::duration spanOf(double seconds);

/// Makes the executors of the queues. The program's own source gives each queue a thread, and the main queue
/// Qt's event loop.
class ExecutorSource {
  public:
    virtual ~ExecutorSource() = default;
    virtual std::shared_ptr<Executor> makeSerial(const std::string& label, DispatchQoS qos) = 0;
    virtual std::shared_ptr<Executor> main() = 0;

    static ExecutorSource& current();
    /// Puts another source in place for a test; nullptr means the program's own. Allowed only while no queue
    /// but the main queue exists.
    static void setCurrent(ExecutorSource* source);
};

} // namespace mirrolet::platform::dispatch
