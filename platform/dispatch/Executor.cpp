#include "platform/dispatch/Executor.h"

#include "platform/dispatch/DispatchQueue.h"
#include "platform/dispatch/MainExecutor.h"
#include "platform/dispatch/ThreadExecutor.h"

#include <algorithm>
#include <cmath>

namespace mirrolet::platform::dispatch {

namespace {

// The longest span in seconds. With this limit, a deadline always fits in a 64-bit number of nanoseconds.
constexpr double longestSpan = 1e9;

class ThreadSource final : public ExecutorSource {
  public:
    std::shared_ptr<Executor> makeSerial(const std::string& label, DispatchQoS) override {
        return std::make_shared<ThreadExecutor>(label);
    }

    std::shared_ptr<Executor> main() override {
        // Never destroyed, because other threads may post until the process ends.
        static auto& executor = *new std::shared_ptr<Executor>(std::make_shared<MainExecutor>());
        return executor;
    }
};

ExecutorSource* chosenSource = nullptr;

} // namespace

Executor::Clock::duration spanOf(double seconds) {
    const double bounded = std::isnan(seconds) ? 0 : std::clamp(seconds, 0.0, longestSpan);
    return std::chrono::duration_cast<Executor::Clock::duration>(std::chrono::duration<double>(bounded));
}

ExecutorSource& ExecutorSource::current() {
    static ThreadSource threads;
    return chosenSource ? *chosenSource : threads;
}

void ExecutorSource::setCurrent(ExecutorSource* source) {
    chosenSource = source;
}

} // namespace mirrolet::platform::dispatch
