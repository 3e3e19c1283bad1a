#include "tests/desktop/harness/Keyboard.h"

#include "tests/desktop/harness/ChildProcess.h"
#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/XInput.h"

namespace mirrolet::harness {

namespace {
constexpr int toXKeyCode = 8;
} // namespace

Keyboard::Keyboard(XClient& client) : Keyboard(std::make_shared<XInput>(client)) {}

void Keyboard::stroke(const std::vector<int>& evdevCodes) {
    for (const int code : evdevCodes)
        press(code);
    for (auto code = evdevCodes.rbegin(); code != evdevCodes.rend(); ++code)
        release(*code);
}

/// Tries to grab the keyboard, which fails if another client has grabbed it. Stops the X server from serving
/// other clients during the attempt, so that none of them misses a key.
bool isKeyboardTaken(XClient& client) {
    xcb_grab_server(client.xcb());
    const auto cookie = xcb_grab_keyboard(client.xcb(), 0, client.root(), XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const Reply<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(client.xcb(), cookie, nullptr));
    xcb_ungrab_keyboard(client.xcb(), XCB_CURRENT_TIME);
    xcb_ungrab_server(client.xcb());
    client.sync();
    return reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

/// Tries to grab the key, which fails if another client has grabbed it. Stops the X server from serving other
/// clients during the attempt, so that the attempt cannot disturb the program.
bool isKeyGrabbed(XClient& client, int evdevCode, int modifiers) {
    xcb_connection_t* xcb = client.xcb();
    const auto code = static_cast<xcb_keycode_t>(evdevCode + toXKeyCode);
    const auto mask = static_cast<std::uint16_t>(modifiers);
    xcb_grab_server(xcb);
    const auto cookie =
        xcb_grab_key_checked(xcb, 0, client.root(), mask, code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const Reply<xcb_generic_error_t> error(xcb_request_check(xcb, cookie));
    if (!error)
        xcb_ungrab_key(xcb, code, client.root(), mask);
    xcb_ungrab_server(xcb);
    client.sync();
    return error != nullptr;
}

void setKeyboardLayout(const XClient& client, const std::string& layout) {
    requireProgram("setxkbmap", "x11-xkb-utils");
    const Sandbox sandbox;
    ChildProcess tool({.command = {"setxkbmap", "-display", client.display(), "-layout", layout},
                       .environment = sandbox.environment()});
    if (tool.waitForExit() != 0)
        throw HarnessError("setxkbmap could not set the layout " + layout);
}

} // namespace mirrolet::harness
