#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace mirrolet::platform::desktop {

/// Names a modifier key by its place on the keyboard, whatever symbol the keyboard layout gives to the key.
enum HotKeyModifier : std::uint32_t {
    superModifier = 1,
    shiftModifier = 2,
    altModifier = 4,
    controlModifier = 8,
};

enum class GrabResult {
    held,
    taken,   ///< The keys are grabbed already, usually by another program.
    invalid, ///< The keyboard has no such key or modifier.
};

/// Grabs key combinations for the program's global shortcuts. While a combination is grabbed, each press of
/// it is reported to this program, whichever window has the focus.
class HotKeys {
  public:
    virtual ~HotKeys() = default;
    /// Sets the handler that is called when a grabbed key is pressed. The backend calls the handler with the
    /// number of the grab, on a thread of the backend. There is one call for each press and none for
    /// auto-repeat. Must be called once, before the first grab().
    virtual void setPressed(std::function<void(std::uint32_t grab)> pressed) = 0;
    /// Grabs a key together with exactly these modifiers. The state of CapsLock and NumLock and the keyboard
    /// layout make no difference. `evdevCode` is the key's place on the keyboard. `number` identifies the
    /// grab and must not be in use. If the key is down at the time of the call, that press is not reported.
    /// Must be called on the main thread.
    virtual GrabResult grab(std::uint32_t number, std::uint32_t evdevCode, std::uint32_t modifiers) = 0;
    /// Sets the title of the next grab with this number: what the hot key does, in words for the user. Some
    /// desktops list the shortcuts of all programs with their titles. By default the title is not used. Must
    /// be called on the main thread.
    virtual void setTitle(std::uint32_t /*number*/, const std::string& /*title*/) {}
    /// Releases a grab. Ignores unknown numbers. Must be called on the main thread.
    virtual void release(std::uint32_t number) = 0;
    /// Suspends or resumes all grabs. While the grabs are suspended, every key reaches the focused window, so
    /// that a shortcut recorder can read the key. Must be called on the main thread.
    virtual void suspend(bool suspended) = 0;
    /// Returns the label that the current keyboard layout gives to a key, such as "P" or "Space". Returns an
    /// empty text if the key has no label. Must be called on the main thread.
    virtual std::string keyLabel(std::uint32_t evdevCode) = 0;
    /// Returns whether a key is down, as far as the windows of this program were told. The default always
    /// returns false. Any thread may call this function.
    [[nodiscard]] virtual bool isDown(std::uint32_t /*evdevCode*/) { return false; }
};

} // namespace mirrolet::platform::desktop
