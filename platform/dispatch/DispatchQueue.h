#pragma once

#include <functional>
#include <memory>
#include <string>

namespace mirrolet::platform {

namespace dispatch {
class Executor;
}

/// The importance of a queue's work. The value has no effect, because the kernel gives ordinary programs no
/// higher priority. A higher priority is not needed either, because the kernel wakes a thread at most 50 µs
/// late.
enum class DispatchQoS { unspecified, userInitiated, userInteractive };

/// A serial queue. Runs one task at a time, in the order of the posts. The queue main() is the application's
/// event loop. Every other queue has a thread, which is named after the queue's label.
class DispatchQueue {
  public:
    /// Starts the queue's thread. The destructor waits for the running task and drops the tasks that have not
    /// started. If the running task itself destroys the queue, the destructor does not wait, and the thread
    /// ends after that task.
    explicit DispatchQueue(std::string label, DispatchQoS qos = DispatchQoS::unspecified);
    ~DispatchQueue();
    DispatchQueue(const DispatchQueue&) = delete;
    DispatchQueue& operator=(const DispatchQueue&) = delete;

    static DispatchQueue& main();

    /// Posts a task, and never waits for the task. Any thread.
    void async(std::function<void()> task);
    [[nodiscard]] const std::string& label() const { return name; }
    [[nodiscard]] const std::shared_ptr<dispatch::Executor>& executor() const { return runner; }

  private:
    DispatchQueue(std::string label, std::shared_ptr<dispatch::Executor> runner);

    std::string name;
    std::shared_ptr<dispatch::Executor> runner;
};

} // namespace mirrolet::platform
