#pragma once

#include "platform/dispatch/Executor.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace mirrolet::platform::dispatch {

/// A clock that a test moves. The main queue, all queues that are made while the clock exists, and their
/// timers run inside advance(), on the test's thread, in the order of their deadlines. A test makes the clock
/// before any queue and destroys the queues before the clock.
class VirtualTime final : public ExecutorSource {
  public:
    VirtualTime();
    ~VirtualTime() override;
    VirtualTime(const VirtualTime&) = delete;
    VirtualTime& operator=(const VirtualTime&) = delete;

    /// Moves the clock forward. Runs the tasks that become due meanwhile, including tasks that those tasks
    /// post.
    void advance(double seconds);
    /// Runs the tasks that are posted or due now.
    void run() { advance(0); }
    /// Returns the label of the queue whose task is running ("main" for the main queue). Returns an empty
    /// string outside of a task.
    [[nodiscard]] const std::string& runningQueue() const;
    /// Returns how often a queue of this label was made.
    [[nodiscard]] int queuesMade(const std::string& label) const;

    std::shared_ptr<Executor> makeSerial(const std::string& label, DispatchQoS qos) override;
    std::shared_ptr<Executor> main() override;

  private:
    class Lane;
    struct Agenda;
    std::shared_ptr<Agenda> agenda;
    std::shared_ptr<Executor> mainLane;
    std::map<std::string, int> made;
};

} // namespace mirrolet::platform::dispatch
