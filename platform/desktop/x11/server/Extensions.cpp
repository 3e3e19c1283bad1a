#include "platform/desktop/x11/server/Extensions.h"

#include "platform/desktop/x11/server/XcbReply.h"
#include "platform/desktop/x11/server/XcbXkb.h"

#include <xcb/composite.h>
#include <xcb/damage.h>
#include <xcb/render.h>
#include <xcb/res.h>
#include <xcb/shape.h>
#include <xcb/shm.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

Extension numbersOf(xcb_connection_t* connection, xcb_extension_t* extension) {
    const auto* data = xcb_get_extension_data(connection, extension);
    return data && data->present ? Extension{data->major_opcode, data->first_event, data->first_error}
                                 : Extension{};
}

bool atLeast(std::uint32_t major, std::uint32_t minor, std::uint32_t wantedMajor, std::uint32_t wantedMinor) {
    return std::pair(major, minor) >= std::pair(wantedMajor, wantedMinor);
}

bool speaksComposite(xcb_connection_t* connection) {
    const XcbReply<xcb_composite_query_version_reply_t> reply(xcb_composite_query_version_reply(
        connection, xcb_composite_query_version(connection, 0, 4), nullptr));
    return reply && atLeast(reply->major_version, reply->minor_version, 0, 2);
}

bool speaksDamage(xcb_connection_t* connection) {
    const XcbReply<xcb_damage_query_version_reply_t> reply(
        xcb_damage_query_version_reply(connection, xcb_damage_query_version(connection, 1, 1), nullptr));
    return reply != nullptr;
}

bool speaksRender(xcb_connection_t* connection) {
    const XcbReply<xcb_render_query_version_reply_t> reply(
        xcb_render_query_version_reply(connection, xcb_render_query_version(connection, 0, 11), nullptr));
    return reply && atLeast(reply->major_version, reply->minor_version, 0, 10);
}

bool speaksXFixes(xcb_connection_t* connection) {
    const XcbReply<xcb_xfixes_query_version_reply_t> reply(
        xcb_xfixes_query_version_reply(connection, xcb_xfixes_query_version(connection, 5, 0), nullptr));
    return reply != nullptr;
}

bool speaksXRes(xcb_connection_t* connection) {
    const XcbReply<xcb_res_query_version_reply_t> reply(
        xcb_res_query_version_reply(connection, xcb_res_query_version(connection, 1, 2), nullptr));
    return reply && atLeast(reply->server_major, reply->server_minor, 1, 2);
}

bool speaksXkb(xcb_connection_t* connection) {
    const XcbReply<xcb_xkb_use_extension_reply_t> reply(
        xcb_xkb_use_extension_reply(connection, xcb_xkb_use_extension(connection, 1, 0), nullptr));
    return reply && reply->supported;
}

bool speaksShm(xcb_connection_t* connection) {
    const XcbReply<xcb_shm_query_version_reply_t> reply(
        xcb_shm_query_version_reply(connection, xcb_shm_query_version(connection), nullptr));
    return reply && atLeast(reply->major_version, reply->minor_version, 1, 2);
}

bool speaksXInput(xcb_connection_t* connection) {
    const XcbReply<xcb_input_xi_query_version_reply_t> reply(
        xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 1), nullptr));
    return reply && atLeast(reply->major_version, reply->minor_version, 2, 1);
}

} // namespace

Extensions::Extensions(xcb_connection_t* connection) {
    struct Wanted {
        Extension* extension;
        xcb_extension_t* id;
        bool (*speaks)(xcb_connection_t*);
    };
    const Wanted all[] = {
        {&composite, &xcb_composite_id, speaksComposite},
        {&damage, &xcb_damage_id, speaksDamage},
        {&render, &xcb_render_id, speaksRender},
        {&xfixes, &xcb_xfixes_id, speaksXFixes},
        {&shape, &xcb_shape_id, nullptr},
        {&xres, &xcb_res_id, speaksXRes},
        {&xkb, &xcb_xkb_id, speaksXkb},
        {&shm, &xcb_shm_id, speaksShm},
        {&xinput, &xcb_input_id, speaksXInput},
    };
    for (const auto& wanted : all)
        xcb_prefetch_extension_data(connection, wanted.id);
    for (const auto& wanted : all) {
        const auto numbers = numbersOf(connection, wanted.id);
        if (numbers && (!wanted.speaks || wanted.speaks(connection)))
            *wanted.extension = numbers;
    }
}

} // namespace mirrolet::platform::desktop::x11
