#pragma once

#include "tests/desktop/harness/InputDevice.h"
#include "tests/desktop/harness/XClient.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace mirrolet::harness {

/// The evdev codes of some keys. A code belongs to a place on the keyboard and does not depend on the layout.
namespace key {
constexpr int escape = 1, f = 33, returnKey = 28, p = 25, space = 57, a = 30, tab = 15;
constexpr int leftShift = 42, leftControl = 29, leftAlt = 56, leftSuper = 125;
constexpr int capsLock = 58, numLock = 69;
} // namespace key

/// Presses keys on a keyboard of the desktop. The key events go to the focused window, or to a client that
/// has grabbed the key.
class Keyboard {
  public:
    explicit Keyboard(std::shared_ptr<InputDevice> device) : device(std::move(device)) {}
    /// Uses the keyboard of the client's X server.
    explicit Keyboard(XClient& client);

    void press(int evdevCode) { device->key(evdevCode, true); }
    void release(int evdevCode) { device->key(evdevCode, false); }
    /// Presses the keys in order and releases them in reverse order.
    void stroke(const std::vector<int>& evdevCodes);

  private:
    std::shared_ptr<InputDevice> device;
};

/// Returns whether a client of the X server has grabbed the keyboard, as a client with an open menu does.
bool isKeyboardTaken(XClient& client);
/// Returns whether another X client has grabbed the key with these modifiers, which are X masks.
bool isKeyGrabbed(XClient& client, int evdevCode, int modifiers);
/// Sets the layout of the X server, such as "us", "ru" or "de" (setxkbmap).
void setKeyboardLayout(const XClient& client, const std::string& layout);

} // namespace mirrolet::harness
