#pragma once

#include "platform/foundation/Mutex.h"

#include <optional>

namespace mirrolet::platform::desktop::wayland {

/// An answer that one thread gives while another thread waits for a limited time.
template <typename T> class TimedAnswer {
  public:
    /// Gives the answer. Returns false if the other thread has stopped waiting.
    bool set(T value) {
        {
            const MutexLock lock(answerMutex);
            if (isGivenUp)
                return false;
            answer = std::move(value);
        }
        given.notifyAll();
        return true;
    }
    /// Waits for the answer and returns it. Returns none if that takes longer than `atMost`.
    template <class Duration> std::optional<T> waitFor(Duration atMost) {
        const MutexLock lock(answerMutex);
        given.waitFor(answerMutex, atMost,
                      [this]() MIRROLET_REQUIRES(answerMutex) { return answer.has_value(); });
        isGivenUp = !answer.has_value();
        return answer;
    }

  private:
    Mutex answerMutex;
    ConditionVariable given;
    std::optional<T> answer MIRROLET_GUARDED_BY(answerMutex);
    bool isGivenUp MIRROLET_GUARDED_BY(answerMutex) = false;
};

} // namespace mirrolet::platform::desktop::wayland
