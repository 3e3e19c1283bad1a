#include "platform/desktop/x11/server/RenderFormats.h"

namespace mirrolet::platform::desktop::x11 {

namespace {

bool sameColours(const xcb_render_directformat_t& a, const xcb_render_directformat_t& b) {
    return a.red_shift == b.red_shift && a.red_mask == b.red_mask && a.green_shift == b.green_shift &&
           a.green_mask == b.green_mask && a.blue_shift == b.blue_shift && a.blue_mask == b.blue_mask;
}

bool isRgb8(const xcb_render_pictforminfo_t& format) {
    const auto& direct = format.direct;
    return format.type == XCB_RENDER_PICT_TYPE_DIRECT && direct.red_shift == 16 && direct.green_shift == 8 &&
           direct.blue_shift == 0 && direct.red_mask == 0xff && direct.green_mask == 0xff &&
           direct.blue_mask == 0xff;
}

} // namespace

RenderFormats::RenderFormats(X11Connection& connection) {
    if (!connection.extensions().render)
        return;
    const auto reply = connection.reply<xcb_render_query_pict_formats_reply>(
        xcb_render_query_pict_formats(connection.xcb()));
    if (!reply)
        return;
    for (auto it = xcb_render_query_pict_formats_formats_iterator(reply.get()); it.rem;
         xcb_render_pictforminfo_next(&it)) {
        formats[it.data->id] = *it.data;
        if (!isRgb8(*it.data))
            continue;
        if (it.data->depth == 24 && it.data->direct.alpha_mask == 0)
            opaque24 = it.data->id;
        if (it.data->depth == 32 && it.data->direct.alpha_mask == 0xff && it.data->direct.alpha_shift == 24)
            argb32 = it.data->id;
    }
    for (auto screen = xcb_render_query_pict_formats_screens_iterator(reply.get()); screen.rem;
         xcb_render_pictscreen_next(&screen))
        for (auto depth = xcb_render_pictscreen_depths_iterator(screen.data); depth.rem;
             xcb_render_pictdepth_next(&depth))
            for (auto visual = xcb_render_pictdepth_visuals_iterator(depth.data); visual.rem;
                 xcb_render_pictvisual_next(&visual))
                visuals[visual.data->visual] = visual.data->format;
}

xcb_render_pictformat_t RenderFormats::exact(xcb_visualid_t visual) const {
    const auto found = visuals.find(visual);
    return found == visuals.end() ? 0 : found->second;
}

bool RenderFormats::hasAlpha(xcb_visualid_t visual) const {
    const auto found = formats.find(exact(visual));
    return found != formats.end() && found->second.direct.alpha_mask != 0;
}

xcb_render_pictformat_t RenderFormats::opaque(xcb_visualid_t visual) const {
    const auto own = formats.find(exact(visual));
    if (own == formats.end() || own->second.direct.alpha_mask == 0)
        return exact(visual);
    for (const auto& [id, format] : formats)
        if (format.depth == own->second.depth && format.type == own->second.type &&
            format.direct.alpha_mask == 0 && sameColours(format.direct, own->second.direct))
            return id;
    return own->first;
}

} // namespace mirrolet::platform::desktop::x11
