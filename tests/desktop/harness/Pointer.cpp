#include "tests/desktop/harness/Pointer.h"

#include <xcb/xtest.h>

namespace mirrolet::harness {

void Pointer::fake(std::uint8_t type, int detail, int x, int y) {
    xcb_test_fake_input(client.xcb(), type, static_cast<std::uint8_t>(detail), XCB_CURRENT_TIME,
                        client.root(), static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    client.sync();
}

void Pointer::move(int x, int y) {
    fake(XCB_MOTION_NOTIFY, 0, x, y);
}

void Pointer::press(int button) {
    fake(XCB_BUTTON_PRESS, button, 0, 0);
}

void Pointer::release(int button) {
    fake(XCB_BUTTON_RELEASE, button, 0, 0);
}

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
