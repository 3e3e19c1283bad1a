#pragma once

#include "tests/desktop/harness/XClient.h"

#include <string>
#include <vector>

namespace mirrolet::harness {

/// Keys by their place: evdev codes, whatever the layout says of them.
namespace key {
constexpr int escape = 1, f = 33, returnKey = 28, p = 25, space = 57, a = 30, tab = 15;
constexpr int leftShift = 42, leftControl = 29, leftAlt = 56, leftSuper = 125;
constexpr int capsLock = 58, numLock = 69;
} // namespace key

/// A keyboard in front of the server: real key events (XTEST) for whoever has the keyboard or a grab.
class Keyboard {
  public:
    explicit Keyboard(XClient& client) : client(client) {}

    void press(int evdevCode);
    void release(int evdevCode);
    /// Presses them in order and releases them in reverse.
    void stroke(const std::vector<int>& evdevCodes);
    /// Whether a client has all keys go to it, as one with an open menu does.
    [[nodiscard]] bool isTaken() const;
    /// Any that the keyboard data know: "us", "ru", "de" (setxkbmap).
    void setLayout(const std::string& layout) const;

  private:
    XClient& client;
};

} // namespace mirrolet::harness
