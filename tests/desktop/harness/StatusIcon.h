#pragma once

#include "tests/desktop/harness/WindowFacts.h"

#include <optional>
#include <sys/types.h>

namespace mirrolet::harness {

/// The program's icon in a tray: a small viewable window of its own inside a window of another program.
std::optional<Box> statusIcon(const WindowFacts& facts, pid_t program);

/// True once Mirrolet's drawing is seen there: a bare tray has neither of its two colours in such number.
bool isStatusIconDrawn(const WindowFacts& facts, const Box& icon);

} // namespace mirrolet::harness
