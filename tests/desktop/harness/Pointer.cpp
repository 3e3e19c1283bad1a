#include "tests/desktop/harness/Pointer.h"

#include "tests/desktop/harness/XInput.h"

namespace mirrolet::harness {

Pointer::Pointer(XClient& client) : Pointer(std::make_shared<XInput>(client)) {}

void Pointer::click(int x, int y, int button) {
    move(x, y);
    press(button);
    release(button);
}

void Pointer::drag(int fromX, int fromY, int toX, int toY, int steps) {
    move(fromX, fromY);
    press();
    for (int step = 1; step <= steps; ++step)
        move(fromX + (toX - fromX) * step / steps, fromY + (toY - fromY) * step / steps);
    release();
}

} // namespace mirrolet::harness
