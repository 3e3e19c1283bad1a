#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace mirrolet::platform::desktop::x11 {

/// One extension of the server: its numbers in requests, events and errors.
struct Extension {
    std::uint8_t majorOpcode = 0; ///< 0 where the server lacks the extension, or has too old a version.
    std::uint8_t firstEvent = 0;
    std::uint8_t firstError = 0;

    explicit operator bool() const { return majorOpcode != 0; }
};

/// The extensions that the backend uses, asked for once.
struct Extensions {
    /// Describes a server that has none of the extensions.
    Extensions() = default;
    /// Asks the server and waits for its replies. Also tells the server which version of each extension this
    /// client speaks, because several extensions refuse every other request until then.
    explicit Extensions(xcb_connection_t* connection);

    Extension composite; ///< 0.2 or later: NameWindowPixmap.
    Extension damage;
    Extension render; ///< 0.10 or later.
    Extension xfixes;
    Extension shape;
    Extension xres; ///< 1.2 or later: QueryClientIds.
    Extension xkb;
    Extension xinput; ///< 2.1 or later: raw events also come while another client has a grab.
};

} // namespace mirrolet::platform::desktop::x11
