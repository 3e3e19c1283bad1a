#pragma once

#include "platform/dispatch/Executor.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace mirrolet::platform::dispatch {

/// A clock that a test moves. While it exists, queues that are made, the main queue and every timer run on
/// it: all on the test's thread, inside advance(), in the order of their deadlines. Make it before any queue,
/// and let the queues go before it.
class VirtualTime final : public ExecutorSource {
  public:
    VirtualTime();
    ~VirtualTime() override;
    VirtualTime(const VirtualTime&) = delete;
    VirtualTime& operator=(const VirtualTime&) = delete;

    /// Moves the clock on, and runs what falls due on the way, what that posts included.
    void advance(double seconds);
    /// Runs what is posted and due now.
    void run() { advance(0); }
    /// The label of the queue whose task is running ("main" for the main queue); empty outside of a task.
    [[nodiscard]] const std::string& runningQueue() const;
    /// How often a queue of this label was made.
    [[nodiscard]] int queuesMade(const std::string& label) const;
    /// How many tasks were posted that would not have woken their queue. They run like all others here.
    [[nodiscard]] int unhurriedPosts() const;

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
