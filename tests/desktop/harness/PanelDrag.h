#pragma once

#include "tests/desktop/harness/Pointer.h"
#include "tests/desktop/harness/WindowFacts.h"

namespace mirrolet::harness {

/// A way of the pointer with its left button held, in pixels of the screen.
struct Drag {
    int fromX;
    int fromY;
    int toX;
    int toY;
};

/// Drags a mirror, or its grip, until the mirror is at `end`. Releases the button only then, because a
/// Wayland compositor and XWayland disagree for a moment about the place of a mirror that moves: a press or a
/// position of that moment goes astray. Throws HarnessError if the mirror does not arrive.
void dragPanel(WindowFacts& facts, Pointer& pointer, xcb_window_t panel, const Drag& way, const Box& end);

} // namespace mirrolet::harness
