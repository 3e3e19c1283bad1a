#pragma once

#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/server/XcbReply.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// A property as the server gave it. Any client can write anything into any property, so type, format and
/// length are checked at each use, and a property that does not fit counts as absent. The bytes are owned by
/// the code that made this struct.
struct Property {
    xcb_atom_t type = XCB_ATOM_NONE; ///< XCB_ATOM_NONE where there is no such property.
    std::uint8_t format = 0;         ///< The bits of an item: 8, 16 or 32.
    std::string_view bytes;
    bool cut = false; ///< The property is longer than what was read of it.

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

/// Asks for at most `mostBytes` of a property of any type.
xcb_get_property_cookie_t requestProperty(const X11Connection& connection, xcb_window_t window,
                                          xcb_atom_t name, std::uint32_t mostBytes);
/// Waits for the reply and returns the property. The property is absent if the window is gone.
PropertyReply takeProperty(const X11Connection& connection, xcb_get_property_cookie_t cookie);

} // namespace mirrolet::platform::desktop::x11
