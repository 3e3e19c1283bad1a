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

/// What runs the tasks of one serial queue: one at a time, in the order they were posted. A task is released
/// right after it ran, on the thread that ran it. Everything here may be called from any thread.
class Executor {
  public:
    using Clock = std::chrono::steady_clock;
    using TimePoint = Clock::time_point;
    using TimerNumber = std::uint64_t;

    virtual ~Executor() = default;
    virtual void post(Task task) = 0;
    /// The same for a task that may wait: alone it does not wake an executor that sleeps. It runs in its
    /// place among the others, with the next one that is posted, or when enough of its kind have come
    /// together.
    virtual void postUnhurried(Task task) { post(std::move(task)); }
    /// The time that deadlines are measured against.
    [[nodiscard]] virtual TimePoint now() const { return Clock::now(); }
    /// Runs the task once, between two posted ones, when the deadline has come (at once if it has passed).
    /// The number is never used twice; 0 if the executor was shut down.
    virtual TimerNumber callAt(TimePoint deadline, Task task) = 0;
    /// Forgets a timed task that has not started. A number that ran or was cancelled is ignored.
    virtual void cancel(TimerNumber number) = 0;
    /// Drops what has not started; nothing starts afterwards. Waits for the running task, unless called by
    /// it.
    virtual void shutDown() = 0;
};

/// Seconds as a span of the clock. What is no number, negative or longer than a clock can hold comes out as a
/// span from none to some decades, as these numbers may come from a file.
[[nodiscard]] Executor::Clock::duration spanOf(double seconds);

/// Where queues get their executors from. The program's own gives threads, and for the main queue Qt's event
/// loop.
class ExecutorSource {
  public:
    virtual ~ExecutorSource() = default;
    virtual std::shared_ptr<Executor> makeSerial(const std::string& label, DispatchQoS qos) = 0;
    virtual std::shared_ptr<Executor> main() = 0;

    static ExecutorSource& current();
    /// Puts another source in place, nullptr for the program's own. Only while no queue but main exists: for
    /// tests.
    static void setCurrent(ExecutorSource* source);
};

} // namespace mirrolet::platform::dispatch
