#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <bitset>

namespace mirrolet::platform::desktop::x11 {

/// Keys that were down already when a hot key was grabbed on them. The server repeats a held key, and the
/// repeat looks like a press of the hot key. Not synchronized, so the owner must guard this object. Always
/// empty on a server without XInput 2.
class HeldKeys {
  public:
    explicit HeldKeys(const X11Connection& connection) : connection(connection) {}

    /// Adds the key if it is down now. Must be called before the key is grabbed.
    void note(xcb_keycode_t key);
    /// Removes the key. Must be called for each KeyRelease and for each raw release, because no raw release
    /// is sent to the client whose grab is active.
    void remove(xcb_keycode_t key);
    [[nodiscard]] bool contains(xcb_keycode_t key) const { return keys.test(key); }

  private:
    [[nodiscard]] bool isDown(xcb_keycode_t key) const;
    void watchReleases(bool watch) const;

    const X11Connection& connection;
    std::bitset<256> keys;
};

} // namespace mirrolet::platform::desktop::x11
