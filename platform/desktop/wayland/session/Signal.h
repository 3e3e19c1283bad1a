#pragma once

#include "platform/foundation/Mutex.h"

#include <chrono>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

/// Wakes one waiting thread. A signal that comes before the wait is not lost.
class Signal {
  public:
    void notify() {
        const MutexLock lock(signalMutex);
        isSet = true;
        changed.notifyAll();
    }
    /// Waits for a signal, at most this long.
    void waitFor(std::chrono::milliseconds atMost) {
        const MutexLock lock(signalMutex);
        changed.waitFor(signalMutex, atMost, [this]() MIRROLET_REQUIRES(signalMutex) { return isSet; });
        isSet = false;
    }

  private:
    Mutex signalMutex;
    ConditionVariable changed;
    bool isSet MIRROLET_GUARDED_BY(signalMutex) = false;
};

} // namespace mirrolet::platform::desktop::wayland
