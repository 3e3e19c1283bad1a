#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace mirrolet::harness {

using Condition = std::function<bool()>;

/// The default deadline of a wait. The time suffices on a loaded machine and with a sanitizer. Only a failing
/// test waits so long.
constexpr std::chrono::milliseconds patience{15000};

/// Checks the condition every 5 ms until it holds. Returns false if the deadline passes first.
bool waitUntil(const Condition& condition, std::chrono::milliseconds deadline = patience);

/// Waits as waitUntil() does. Throws HarnessError with the message if the deadline passes first.
void require(const std::string& message, const Condition& condition,
             std::chrono::milliseconds deadline = patience);

/// Checks the condition again and again during the given time. Returns true if the condition always held. A
/// test uses this function to show that something does not happen.
bool holdsFor(const Condition& condition, std::chrono::milliseconds time);

/// Makes the current wait, or else the next one, throw HarnessError, so that destructors end all started
/// processes. A signal handler may call this function.
void interruptWait();

} // namespace mirrolet::harness
