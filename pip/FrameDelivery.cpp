#include "pip/FrameDelivery.h"

#include "platform/dispatch/DispatchQueue.h"

namespace mirrolet {

using namespace platform;

namespace {
constexpr int mostRepeats = 15; // The number of captures in one second.
}

void FrameDelivery::post(const CGImageRef& image) {
    const auto before = last.lock();
    const bool repeated = image == before;
    if (repeated && ++repeats < mostRepeats)
        return;
    // One task delivers all repeats of the previous image, so that the main thread wakes only once for the
    // repeats.
    const int times = std::exchange(repeats, 0);
    DispatchQueue::main().async([deliver = deliver, before, times, next = repeated ? nullptr : image] {
        for (int time = 0; before && time < times; ++time)
            deliver(before);
        if (next)
            deliver(next);
    });
    last = image;
}

} // namespace mirrolet
