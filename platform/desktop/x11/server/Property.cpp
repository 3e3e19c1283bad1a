#include "platform/desktop/x11/server/Property.h"

#include <cstddef>
#include <cstring>

namespace mirrolet::platform::desktop::x11 {

std::vector<std::uint32_t> Property::items(xcb_atom_t itemType) const {
    if (type != itemType || format != 32)
        return {};
    std::vector<std::uint32_t> values(bytes.size() / sizeof(std::uint32_t));
    if (!values.empty())
        std::memcpy(values.data(), bytes.data(), values.size() * sizeof(std::uint32_t));
    return values;
}

Property propertyIn(const XcbReply<xcb_get_property_reply_t>& reply) {
    if (!reply || reply->type == XCB_ATOM_NONE)
        return {};
    const auto* value = static_cast<const char*>(xcb_get_property_value(reply.get()));
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
    return {reply->type, reply->format, {value, length}, reply->bytes_after > 0};
}

xcb_get_property_cookie_t requestProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t name,
                                          std::uint32_t mostBytes) {
    return xcb_get_property(connection, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, mostBytes / 4);
}

XcbReply<xcb_get_property_reply_t> takeProperty(xcb_connection_t* connection,
                                                xcb_get_property_cookie_t cookie) {
    // With the error asked for, a window that died gives no event either: nothing to read again elsewhere.
    xcb_generic_error_t* error = nullptr;
    XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, &error));
    const XcbReply<xcb_generic_error_t> owned(error);
    return reply;
}

} // namespace mirrolet::platform::desktop::x11
