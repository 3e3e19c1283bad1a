#pragma once

namespace mirrolet::harness {

/// Makes the events of a keyboard and a pointer.
class InputDevice {
  public:
    InputDevice() = default;
    virtual ~InputDevice() = default;
    InputDevice(const InputDevice&) = delete;
    InputDevice& operator=(const InputDevice&) = delete;

    virtual void key(int evdevCode, bool pressed) = 0;
    /// Moves the pointer to a place in pixels of the screen.
    virtual void moveTo(int x, int y) = 0;
    /// Presses or releases a button: 1 is the left one, 2 the middle one and 3 the right one.
    virtual void button(int number, bool pressed) = 0;
};

} // namespace mirrolet::harness
