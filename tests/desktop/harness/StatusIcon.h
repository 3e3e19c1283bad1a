#pragma once

#include "tests/desktop/harness/WindowFacts.h"

#include <optional>
#include <sys/types.h>

namespace mirrolet::harness {

/// Returns the place of Mirrolet's icon in a tray. A small viewable window of the process `program` counts as
/// the icon if the window is inside a window of another process.
std::optional<Box> statusIcon(const WindowFacts& facts, pid_t program);

/// Returns whether the box on the screen shows Mirrolet's symbol. Counts the pixels in the symbol's two
/// colours, because an empty tray has few such pixels.
bool isStatusIconDrawn(const WindowFacts& facts, const Box& icon);

} // namespace mirrolet::harness
