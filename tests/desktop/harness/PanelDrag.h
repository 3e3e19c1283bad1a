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

/// Drags a mirror, or its grip, until the mirror is at `end`, and then releases the button. While a mirror
/// moves, a Wayland compositor and XWayland can disagree for a moment about its place. A press that is sent
/// then can be lost, and a pointer position can be off. So a lost press is repeated, and the pointer goes on
/// by what is missing until the mirror arrives. Throws HarnessError if the mirror does not arrive.
void dragPanel(WindowFacts& facts, Pointer& pointer, xcb_window_t panel, const Drag& way, const Box& end);

} // namespace mirrolet::harness
