#include "platform/appkit/NSAnimationContext.h"

#include <utility>

namespace mirrolet::platform {

namespace {
double groupDuration = 0;
}

void NSAnimationContext::runAnimationGroup(double duration, const std::function<void()>& changes) {
    const double outer = std::exchange(groupDuration, duration);
    changes();
    groupDuration = outer;
}

double NSAnimationContext::currentDuration() {
    return groupDuration;
}

} // namespace mirrolet::platform
