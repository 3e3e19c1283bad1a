#include "tests/desktop/harness/Keyboard.h"

#include "tests/desktop/harness/ChildProcess.h"
#include "tests/desktop/harness/HarnessError.h"

#include <xcb/xtest.h>

namespace mirrolet::harness {

namespace {

constexpr int fromEvdev = 8; // X key codes begin at 8.

void fakeKey(XClient& client, std::uint8_t type, int evdevCode) {
    xcb_test_fake_input(client.xcb(), type, static_cast<std::uint8_t>(evdevCode + fromEvdev),
                        XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    client.sync();
}

} // namespace

void Keyboard::press(int evdevCode) {
    fakeKey(client, XCB_KEY_PRESS, evdevCode);
}

void Keyboard::release(int evdevCode) {
    fakeKey(client, XCB_KEY_RELEASE, evdevCode);
}

void Keyboard::stroke(const std::vector<int>& evdevCodes) {
    for (const int code : evdevCodes)
        press(code);
    for (auto code = evdevCodes.rbegin(); code != evdevCodes.rend(); ++code)
        release(*code);
}

/// Tries to grab the keyboard. Grabs the server during the attempt, so that no other client misses a key.
bool Keyboard::isTaken() const {
    xcb_grab_server(client.xcb());
    const auto cookie = xcb_grab_keyboard(client.xcb(), 0, client.root(), XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const Reply<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(client.xcb(), cookie, nullptr));
    xcb_ungrab_keyboard(client.xcb(), XCB_CURRENT_TIME);
    xcb_ungrab_server(client.xcb());
    client.sync();
    return reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

void Keyboard::setLayout(const std::string& layout) const {
    requireProgram("setxkbmap", "x11-xkb-utils");
    const Sandbox sandbox;
    ChildProcess tool({.command = {"setxkbmap", "-display", client.display(), "-layout", layout},
                       .environment = sandbox.environment()});
    if (tool.waitForExit() != 0)
        throw HarnessError("setxkbmap could not set the layout " + layout);
}

} // namespace mirrolet::harness
