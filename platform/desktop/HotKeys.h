#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace mirrolet::platform::desktop {

/// The modifier keys, by their place on the keyboard.
enum HotKeyModifier : std::uint32_t {
    superModifier = 1,
    shiftModifier = 2,
    altModifier = 4,
    controlModifier = 8,
};

enum class GrabResult {
    held,
    taken,   ///< Another program holds the key; nothing stays grabbed.
    invalid, ///< No such key or modifier on this keyboard; nothing stays grabbed.
};

class HotKeys {
  public:
    virtual ~HotKeys() = default;
    /// Sets the handler of presses. The backend calls the handler with the grab's number on a thread of its
    /// own, once for each press and not for auto-repeat. To be set once, before the first grab.
    virtual void setPressed(std::function<void(std::uint32_t grab)> pressed) = 0;
    /// Grabs the key at a place (evdev key code) with exactly these modifiers, whatever the locks and the
    /// layout. If the key is down already, the first report is of its next press. The caller chooses a number
    /// that is not in use. Main thread.
    virtual GrabResult grab(std::uint32_t number, std::uint32_t evdevCode, std::uint32_t modifiers) = 0;
    /// Releases a grab. Ignores unknown numbers. Main thread.
    virtual void release(std::uint32_t number) = 0;
    /// Suspends or resumes all grabs. While they are suspended, every key reaches the focused window, so that
    /// a shortcut recorder can read the key. Main thread.
    virtual void suspend(bool suspended) = 0;
    /// Returns the label of the key at a place in the present keyboard layout, such as "P" or "Space". Empty
    /// if the layout has none. Main thread.
    virtual std::string keyLabel(std::uint32_t evdevCode) = 0;
};

} // namespace mirrolet::platform::desktop
