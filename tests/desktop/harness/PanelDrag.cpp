#include "tests/desktop/harness/PanelDrag.h"

#include "tests/desktop/harness/Wait.h"

namespace mirrolet::harness {

namespace {

constexpr std::chrono::seconds timeForOnePress{2};

} // namespace

void dragPanel(WindowFacts& facts, Pointer& pointer, xcb_window_t panel, const Drag& way, const Box& end) {
    const Box before = facts.box(panel);
    const auto begin = [&] {
        pointer.move(way.fromX, way.fromY);
        pointer.press();
        pointer.move((way.fromX + way.toX) / 2, (way.fromY + way.toY) / 2);
        const bool follows = waitUntil([&] { return facts.box(panel) != before; }, timeForOnePress);
        if (!follows)
            pointer.release();
        return follows;
    };
    require("the mirror follows the pointer", begin);
    require("the mirror arrives", [&] {
        pointer.move(way.toX - 1, way.toY); // A compositor reports no move to the same place.
        pointer.move(way.toX, way.toY);
        return facts.box(panel) == end;
    });
    pointer.release();
}

} // namespace mirrolet::harness
