#pragma once

#include "tests/desktop/harness/WindowFacts.h"

#include <optional>
#include <sys/types.h>

namespace mirrolet::harness {

/// Finds the program's icon in a tray. The icon is a small viewable window of the program inside a window of
/// another program.
std::optional<Box> statusIcon(const WindowFacts& facts, pid_t program);

/// Returns whether the box shows Mirrolet's symbol. An empty tray has few pixels of the symbol's two colours.
bool isStatusIconDrawn(const WindowFacts& facts, const Box& icon);

} // namespace mirrolet::harness
