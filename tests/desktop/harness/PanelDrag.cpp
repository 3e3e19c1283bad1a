#include "tests/desktop/harness/PanelDrag.h"

#include "tests/desktop/harness/Wait.h"

namespace mirrolet::harness {

namespace {

constexpr std::chrono::seconds timeForOnePress{2};
constexpr std::chrono::milliseconds timeForOneMove{500};

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
    int x = way.toX;
    int y = way.toY;
    require("the mirror arrives", [&] {
        pointer.move(x, y);
        if (waitUntil([&] { return facts.box(panel) == end; }, timeForOneMove))
            return true;
        const Box box = facts.box(panel);
        x += end.x + end.width - box.x - box.width;
        y += end.y + end.height - box.y - box.height;
        return false;
    });
    pointer.release();
}

} // namespace mirrolet::harness
