#include "tests/desktop/harness/XInput.h"

#include <xcb/xtest.h>

namespace mirrolet::harness {

namespace {
constexpr int fromEvdev = 8; // X key codes begin at 8.
} // namespace

void XInput::key(int evdevCode, bool pressed) {
    fake(pressed ? XCB_KEY_PRESS : XCB_KEY_RELEASE, evdevCode + fromEvdev, 0, 0);
}

void XInput::moveTo(int x, int y) {
    fake(XCB_MOTION_NOTIFY, 0, x, y);
}

void XInput::button(int number, bool pressed) {
    fake(pressed ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, number, 0, 0);
}

void XInput::fake(int type, int detail, int x, int y) {
    xcb_test_fake_input(client.xcb(), static_cast<std::uint8_t>(type), static_cast<std::uint8_t>(detail),
                        XCB_CURRENT_TIME, client.root(), static_cast<std::int16_t>(x),
                        static_cast<std::int16_t>(y), 0);
    client.sync();
}

} // namespace mirrolet::harness
