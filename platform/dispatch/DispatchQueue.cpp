#include "platform/dispatch/DispatchQueue.h"

#include "platform/dispatch/Executor.h"

#include <utility>

namespace mirrolet::platform {

namespace {

/// The executor of the main queue. Asks ExecutorSource for the real executor at each call, because the main
/// queue lives as long as the process and a test may replace the ExecutorSource meanwhile.
class CurrentMainExecutor final : public dispatch::Executor {
  public:
    void post(dispatch::Task task) override { actual()->post(std::move(task)); }
    [[nodiscard]] TimePoint now() const override { return actual()->now(); }
    TimerNumber callAt(TimePoint deadline, dispatch::Task task) override {
        return actual()->callAt(deadline, std::move(task));
    }
    void cancel(TimerNumber number) override { actual()->cancel(number); }
    void shutDown() override {}

  private:
    static std::shared_ptr<Executor> actual() { return dispatch::ExecutorSource::current().main(); }
};

} // namespace

DispatchQueue::DispatchQueue(std::string label, DispatchQoS qos)
    : name(std::move(label)), runner(dispatch::ExecutorSource::current().makeSerial(name, qos)) {}

DispatchQueue::DispatchQueue(std::string label, std::shared_ptr<dispatch::Executor> runner)
    : name(std::move(label)), runner(std::move(runner)) {}

DispatchQueue::~DispatchQueue() {
    runner->shutDown();
}

DispatchQueue& DispatchQueue::main() {
    static auto& queue = *new DispatchQueue("main", std::make_shared<CurrentMainExecutor>());
    return queue;
}

void DispatchQueue::async(std::function<void()> task) {
    runner->post(std::move(task));
}

} // namespace mirrolet::platform
