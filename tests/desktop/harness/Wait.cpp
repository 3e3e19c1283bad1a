#include "tests/desktop/harness/Wait.h"

#include "tests/desktop/harness/HarnessError.h"

#include <atomic>
#include <thread>

namespace mirrolet::harness {

namespace {
constexpr std::chrono::milliseconds pollEvery{5};
std::atomic<bool> interrupted{false};
} // namespace

bool waitUntil(const Condition& condition, std::chrono::milliseconds deadline) {
    const auto end = std::chrono::steady_clock::now() + deadline;
    while (!condition()) {
        if (interrupted.exchange(false))
            throw HarnessError("interrupted");
        if (std::chrono::steady_clock::now() >= end)
            return false;
        std::this_thread::sleep_for(pollEvery);
    }
    return true;
}

void require(const std::string& message, const Condition& condition, std::chrono::milliseconds deadline) {
    if (!waitUntil(condition, deadline))
        throw HarnessError("never happened within " + std::to_string(deadline.count()) + " ms: " + message);
}

bool holdsFor(const Condition& condition, std::chrono::milliseconds time) {
    return !waitUntil([&] { return !condition(); }, time);
}

void interruptWait() {
    interrupted = true;
}

} // namespace mirrolet::harness
