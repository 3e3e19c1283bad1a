#pragma once

#include <functional>
#include <memory>
#include <string>

namespace mirrolet::platform {

namespace dispatch {
class Executor;
}

/// How much a queue's work matters. It is a name only: the kernel gives ordinary programs no higher priority,
/// and wakes threads at most 50 µs late as it is.
enum class DispatchQoS { unspecified, userInitiated, userInteractive };

/// A serial queue: runs one task at a time, in the order they were posted. Every queue but main() is one
/// thread that carries the queue's label as its name; main() is the application's event loop.
class DispatchQueue {
  public:
    /// Starts the queue's thread. Destroying the queue lets the running task end, drops what was not started,
    /// and joins the thread (or leaves it to end by itself if the last owner is one of the queue's own
    /// tasks).
    explicit DispatchQueue(std::string label, DispatchQoS qos = DispatchQoS::unspecified);
    ~DispatchQueue();
    DispatchQueue(const DispatchQueue&) = delete;
    DispatchQueue& operator=(const DispatchQueue&) = delete;

    static DispatchQueue& main();

    /// Posts a task; never waits for it. Any thread.
    void async(std::function<void()> task);
    /// The same for what may wait: the main queue's thread is not woken for each such task, but runs them, in
    /// order with all others, with the next that is posted, or when fifteen have come together.
    void asyncUnhurried(std::function<void()> task);
    [[nodiscard]] const std::string& label() const { return name; }
    [[nodiscard]] const std::shared_ptr<dispatch::Executor>& executor() const { return runner; }

  private:
    DispatchQueue(std::string label, std::shared_ptr<dispatch::Executor> runner);

    std::string name;
    std::shared_ptr<dispatch::Executor> runner;
};

} // namespace mirrolet::platform
