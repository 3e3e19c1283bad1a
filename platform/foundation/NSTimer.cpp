#include "platform/foundation/NSTimer.h"

#include "platform/dispatch/DispatchQueue.h"
#include "platform/dispatch/Executor.h"

#include <utility>

namespace mirrolet::platform {

struct NSTimer::State {
    dispatch::Executor::TimerNumber number = 0;
};

NSTimer::NSTimer(std::shared_ptr<State> state) : state(std::move(state)) {}

std::shared_ptr<NSTimer> NSTimer::scheduledTimer(double seconds, std::function<void()> block) {
    auto& executor = *DispatchQueue::main().executor();
    auto state = std::make_shared<State>();
    state->number = executor.callAt(executor.now() + dispatch::spanOf(seconds), std::move(block));
    return std::shared_ptr<NSTimer>(new NSTimer(std::move(state)));
}

void NSTimer::invalidate() {
    if (const auto number = std::exchange(state->number, 0))
        DispatchQueue::main().executor()->cancel(number);
}

} // namespace mirrolet::platform
