#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace mirrolet::harness {

using Condition = std::function<bool()>;

/// Enough for a loaded machine and a sanitizer. Only a failing test waits that long.
constexpr std::chrono::milliseconds patience{15000};

/// Polls every 5 ms until the condition holds. False if the deadline passes first.
bool waitUntil(const Condition& condition, std::chrono::milliseconds deadline = patience);

/// As waitUntil(), but throws HarnessError with the message instead of returning false.
void require(const std::string& message, const Condition& condition,
             std::chrono::milliseconds deadline = patience);

/// True if the condition holds at every poll during the given time. For an event that must not happen.
bool holdsFor(const Condition& condition, std::chrono::milliseconds time);

/// Ends the running or the next wait with a HarnessError, so that the owners end all started processes. Safe
/// in a signal handler.
void interruptWait();

} // namespace mirrolet::harness
