#pragma once

#include "tests/desktop/harness/XClient.h"

namespace mirrolet::harness {

/// Moves the X server's pointer and presses its buttons, through the XTEST extension. Positions are in pixels
/// of the root window.
class Pointer {
  public:
    explicit Pointer(XClient& client) : client(client) {}

    void move(int x, int y);
    void press(int button = 1);
    void release(int button = 1);
    void click(int x, int y, int button = 1);
    /// Presses at the first place, moves to the second in `steps` steps and releases there.
    void drag(int fromX, int fromY, int toX, int toY, int steps = 8);

  private:
    void fake(std::uint8_t type, int detail, int x, int y);

    XClient& client;
};

} // namespace mirrolet::harness
