#pragma once

#include "tests/desktop/harness/WindowFacts.h"

#include <optional>
#include <sys/types.h>

namespace mirrolet::harness {

/// The program's icon in a tray: a small viewable window of the program inside a window of another program.
std::optional<Box> statusIcon(const WindowFacts& facts, pid_t program);

/// Whether Mirrolet's symbol is seen in the box. An empty tray has few pixels of the symbol's two colours.
bool isStatusIconDrawn(const WindowFacts& facts, const Box& icon);

} // namespace mirrolet::harness
