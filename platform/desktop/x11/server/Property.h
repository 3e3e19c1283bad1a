#pragma once

#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/server/XcbReply.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// The value of a window's property, as the server gave it. Any client can write anything into any property.
/// Each use therefore checks type, format and length, and treats a property that does not fit as absent. The
/// memory of `bytes` belongs to the code that made this struct.
struct Property {
    xcb_atom_t type = XCB_ATOM_NONE; ///< XCB_ATOM_NONE if the window lacks the property.
    std::uint8_t format = 0;         ///< The number of bits of an item, which is 8, 16 or 32.
    std::string_view bytes;
    bool cut = false; ///< Whether the property is longer than `bytes`.

    [[nodiscard]] bool isText(xcb_atom_t textType) const { return type == textType && format == 8; }
    /// Returns the items of a property of that type with 32 bits per item. Returns no items for any other
    /// property.
    [[nodiscard]] std::vector<std::uint32_t> items(xcb_atom_t itemType) const;
};

/// A property that owns its bytes.
struct PropertyReply : Property {
    explicit PropertyReply(XcbReply<xcb_get_property_reply_t> reply);

    /// Returns false if the window is gone. Returns true also if the window lacks the property.
    [[nodiscard]] bool answered() const { return owner != nullptr; }

    XcbReply<xcb_get_property_reply_t> owner;
};

/// Requests at most `mostBytes` bytes of a property of any type. Does not wait for the reply.
xcb_get_property_cookie_t requestProperty(const X11Connection& connection, xcb_window_t window,
                                          xcb_atom_t name, std::uint32_t mostBytes);
/// Waits for the reply and returns the property. Returns an absent property if the window is gone.
PropertyReply takeProperty(const X11Connection& connection, xcb_get_property_cookie_t cookie);

} // namespace mirrolet::platform::desktop::x11
