#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace mirrolet::harness {

using Condition = std::function<bool()>;

/// The default deadline, which is enough for a loaded machine and a sanitizer. Only a failing test waits that
/// long.
constexpr std::chrono::milliseconds patience{15000};

/// Checks the condition every 5 ms until it holds. Returns false if the deadline passes first.
bool waitUntil(const Condition& condition, std::chrono::milliseconds deadline = patience);

/// Waits as waitUntil() does, but throws HarnessError with the message instead of returning false.
void require(const std::string& message, const Condition& condition,
             std::chrono::milliseconds deadline = patience);

/// Checks the condition again and again during the given time. Returns true if it always held. Use this for
/// an event that must not happen.
bool holdsFor(const Condition& condition, std::chrono::milliseconds time);

/// Makes the running or the next wait throw HarnessError, so that destructors end all started processes. May
/// be called in a signal handler.
void interruptWait();

} // namespace mirrolet::harness
