#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace mirrolet::harness {

using Condition = std::function<bool()>;

/// Long enough for a loaded machine and a sanitizer; only a test that fails waits that long.
constexpr std::chrono::milliseconds patience{15000};

/// Polls every 5 ms until the condition holds. False when the deadline passed without it.
bool waitUntil(const Condition& condition, std::chrono::milliseconds deadline = patience);

/// The same, but throws HarnessError with the message when it never held.
void require(const std::string& message, const Condition& condition,
             std::chrono::milliseconds deadline = patience);

/// For what must not happen: true if the condition held at every poll of the given time.
bool holdsFor(const Condition& condition, std::chrono::milliseconds time);

/// From a signal handler: lets the wait that runs, or the next one, end with a HarnessError, so that
/// everything that was started is ended by its owner.
void interruptWait();

} // namespace mirrolet::harness
