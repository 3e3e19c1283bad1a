#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <bitset>

namespace mirrolet::platform::desktop::x11 {

/// Keys that were down already when a hot key was grabbed on them. The server repeats a held key, and the
/// repeat looks like a press of the hot key. Not synchronized: the owner guards it. Empty on a server without
/// XInput 2.
class HeldKeys {
  public:
    explicit HeldKeys(const X11Connection& connection) : connection(connection) {}

    /// Adds the key if it is down now. To be called before the key is grabbed.
    void note(xcb_keycode_t key);
    /// To be called for each KeyRelease and each raw release. No raw release is sent to the client whose grab
    /// is active.
    void remove(xcb_keycode_t key);
    [[nodiscard]] bool contains(xcb_keycode_t key) const { return keys.test(key); }

  private:
    [[nodiscard]] bool isDown(xcb_keycode_t key) const;
    void watchReleases(bool watch) const;

    const X11Connection& connection;
    std::bitset<256> keys;
};

} // namespace mirrolet::platform::desktop::x11
