#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace mirrolet::platform::desktop::x11 {

/// The numbers that mark the requests, events and errors of one extension of the server.
struct Extension {
    std::uint8_t majorOpcode = 0; ///< 0 if the server lacks the extension, or has too old a version.
    std::uint8_t firstEvent = 0;
    std::uint8_t firstError = 0;

    explicit operator bool() const { return majorOpcode != 0; }
};

/// Tells which of the extensions that the backend uses are available on the server.
struct Extensions {
    /// Describes a server that has none of the extensions.
    Extensions() = default;
    /// Asks the server and waits for its replies. Also tells the server which version of each extension this
    /// client speaks, because several extensions refuse every other request until then.
    explicit Extensions(xcb_connection_t* connection);

    Extension composite; ///< Version 0.2 or later, for NameWindowPixmap.
    Extension damage;
    Extension render; ///< Version 0.10 or later.
    Extension xfixes;
    Extension shape;
    Extension xres; ///< Version 1.2 or later, for QueryClientIds.
    Extension xkb;
    Extension shm;    ///< Version 1.2 or later, which attaches memory by its file descriptor.
    Extension xinput; ///< Version 2.1 or later, which sends raw events even while another client has a grab.
};

} // namespace mirrolet::platform::desktop::x11
