#pragma once

#include "tests/desktop/harness/XClient.h"

#include <string>
#include <vector>

namespace mirrolet::harness {

/// Keys by their place, as evdev codes. They do not depend on the layout.
namespace key {
constexpr int escape = 1, f = 33, returnKey = 28, p = 25, space = 57, a = 30, tab = 15;
constexpr int leftShift = 42, leftControl = 29, leftAlt = 56, leftSuper = 125;
constexpr int capsLock = 58, numLock = 69;
} // namespace key

/// The keyboard of the server. Makes real key events (XTEST), which go to the focus or to a grab.
class Keyboard {
  public:
    explicit Keyboard(XClient& client) : client(client) {}

    void press(int evdevCode);
    void release(int evdevCode);
    /// Presses the keys in order and releases them in reverse order.
    void stroke(const std::vector<int>& evdevCodes);
    /// Returns whether a client has grabbed the keyboard, as a client with an open menu does.
    [[nodiscard]] bool isTaken() const;
    /// Sets the layout, such as "us", "ru" or "de" (setxkbmap).
    void setLayout(const std::string& layout) const;

  private:
    XClient& client;
};

} // namespace mirrolet::harness
