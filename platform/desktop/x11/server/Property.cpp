#include "platform/desktop/x11/server/Property.h"

#include <cstddef>
#include <cstring>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

Property viewOf(const xcb_get_property_reply_t* reply) {
    if (!reply || reply->type == XCB_ATOM_NONE)
        return {};
    const auto* value = static_cast<const char*>(xcb_get_property_value(reply));
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(reply));
    return {reply->type, reply->format, {value, length}, reply->bytes_after > 0};
}

} // namespace

std::vector<std::uint32_t> Property::items(xcb_atom_t itemType) const {
    if (type != itemType || format != 32)
        return {};
    std::vector<std::uint32_t> values(bytes.size() / sizeof(std::uint32_t));
    if (!values.empty())
        std::memcpy(values.data(), bytes.data(), values.size() * sizeof(std::uint32_t));
    return values;
}

PropertyReply::PropertyReply(XcbReply<xcb_get_property_reply_t> reply)
    : Property(viewOf(reply.get())), owner(std::move(reply)) {}

xcb_get_property_cookie_t requestProperty(const X11Connection& connection, xcb_window_t window,
                                          xcb_atom_t name, std::uint32_t mostBytes) {
    return xcb_get_property(connection.xcb(), 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, mostBytes / 4);
}

PropertyReply takeProperty(const X11Connection& connection, xcb_get_property_cookie_t cookie) {
    return PropertyReply(connection.reply<xcb_get_property_reply>(cookie, windowGone));
}

} // namespace mirrolet::platform::desktop::x11
