#include "platform/desktop/x11/keys/HeldKeys.h"

#include <xcb/xinput.h>

namespace mirrolet::platform::desktop::x11 {

void HeldKeys::note(xcb_keycode_t key) {
    if (!connection.extensions().xinput)
        return;
    watchReleases(true); // This comes before isKeyDown(), so that no release is missed.
    keys.set(key, isKeyDown(connection, key));
    if (keys.none())
        watchReleases(false);
}

void HeldKeys::remove(xcb_keycode_t key) {
    if (!contains(key))
        return;
    keys.reset(key);
    if (keys.none())
        watchReleases(false);
}

bool isKeyDown(const X11Connection& connection, xcb_keycode_t key) {
    constexpr unsigned bitsInByte = 8;
    const auto reply = connection.reply<xcb_query_keymap_reply>(xcb_query_keymap(connection.xcb()));
    return reply && (reply->keys[key / bitsInByte] >> (key % bitsInByte) & 1) != 0;
}

/// Begins or stops watching released keys by raw events, which XInput 2 sends. Without an active grab, a
/// KeyRelease goes to the focused window only, but a raw event tells this program of each released key. Raw
/// events are watched only while a key is held, because each event wakes the program.
void HeldKeys::watchReleases(bool watch) const {
    struct {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        std::uint32_t mask = 0;
    } selection;
    selection.mask = watch ? XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE : 0;
    // The pointer is made from the whole struct, because XCB also reads the mask that follows the head.
    const auto* masks = reinterpret_cast<const xcb_input_event_mask_t*>(&selection);
    xcb_input_xi_select_events(connection.xcb(), connection.root(), 1, masks);
    connection.flush();
}

} // namespace mirrolet::platform::desktop::x11
