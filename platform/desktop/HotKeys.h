#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace mirrolet::platform::desktop {

/// Modifier keys by their place on the keyboard.
enum HotKeyModifier : std::uint32_t {
    superModifier = 1,
    shiftModifier = 2,
    altModifier = 4,
    controlModifier = 8,
};

enum class GrabResult {
    held,
    taken,   ///< Another program holds it; nothing is left grabbed.
    invalid, ///< No such key or modifier on this keyboard; nothing is left grabbed.
};

class HotKeys {
  public:
    virtual ~HotKeys() = default;
    /// Sets the handler of presses. It is called with the grab's number on the backend's own thread, once for
    /// each press and not for auto-repeat. Set once, before the first grab.
    virtual void setPressed(std::function<void(std::uint32_t grab)> pressed) = 0;
    /// Grabs the key at a place (evdev key code) with exactly these modifiers, whatever the locks and the
    /// layout. A key that is down already counts from its next press on. The number is the caller's and not
    /// in use. Main thread.
    virtual GrabResult grab(std::uint32_t number, std::uint32_t evdevCode, std::uint32_t modifiers) = 0;
    /// Unknown numbers are ignored. Main thread.
    virtual void release(std::uint32_t number) = 0;
    /// While suspended, the grabs let every key through to the focused window, so that a shortcut recorder
    /// can read it. Main thread.
    virtual void suspend(bool suspended) = 0;
    /// Label of the key at a place in the present keyboard layout, such as "P" or "Space". Empty if the
    /// layout has none. Main thread.
    virtual std::string keyLabel(std::uint32_t evdevCode) = 0;
};

} // namespace mirrolet::platform::desktop
