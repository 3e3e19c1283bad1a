#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <bitset>

namespace mirrolet::platform::desktop::x11 {

/// Asks the server whether the key is down.
[[nodiscard]] bool isKeyDown(const X11Connection& connection, xcb_keycode_t key);

/// Remembers keys that were down already when a hot key was grabbed on them. The server repeats a held key,
/// and the repeat looks like a press of the hot key. The owner must ignore presses of the remembered keys. On
/// a server without XInput 2, no keys are remembered. Not thread-safe, so the owner must guard this object.
class HeldKeys {
  public:
    explicit HeldKeys(const X11Connection& connection) : connection(connection) {}

    /// Adds the key if it is down now. Must be called before the key is grabbed.
    void note(xcb_keycode_t key);
    /// Removes the key. Must be called when a KeyRelease or a raw event of XInput 2 reports that the key was
    /// released. Both kinds of event are needed, because a client whose grab is active gets a KeyRelease but
    /// no raw event.
    void remove(xcb_keycode_t key);
    [[nodiscard]] bool contains(xcb_keycode_t key) const { return keys.test(key); }

  private:
    void watchReleases(bool watch) const;

    const X11Connection& connection;
    std::bitset<256> keys;
};

} // namespace mirrolet::platform::desktop::x11
