#pragma once

#include "tests/desktop/harness/InputDevice.h"
#include "tests/desktop/harness/XClient.h"

#include <memory>
#include <utility>

namespace mirrolet::harness {

/// Moves the pointer of the desktop and presses its buttons. All positions are in pixels of the screen.
class Pointer {
  public:
    explicit Pointer(std::shared_ptr<InputDevice> device) : device(std::move(device)) {}
    /// Uses the pointer of the client's X server.
    explicit Pointer(XClient& client);

    void move(int x, int y) { device->moveTo(x, y); }
    void press(int button = 1) { device->button(button, true); }
    void release(int button = 1) { device->button(button, false); }
    void click(int x, int y, int button = 1);
    /// Presses the left button at the first place, moves the pointer to the second place in `steps` steps,
    /// and releases the button there.
    void drag(int fromX, int fromY, int toX, int toY, int steps = 8);

  private:
    std::shared_ptr<InputDevice> device;
};

} // namespace mirrolet::harness
