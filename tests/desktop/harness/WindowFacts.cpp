#include "tests/desktop/harness/WindowFacts.h"

#include <xcb/res.h>

#include <algorithm>
#include <cstring>

namespace mirrolet::harness {

namespace {

Reply<xcb_get_window_attributes_reply_t> attributes(XClient& client, xcb_window_t window) {
    return Reply<xcb_get_window_attributes_reply_t>(xcb_get_window_attributes_reply(
        client.xcb(), xcb_get_window_attributes(client.xcb(), window), nullptr));
}

Reply<xcb_query_tree_reply_t> tree(XClient& client, xcb_window_t window) {
    return Reply<xcb_query_tree_reply_t>(
        xcb_query_tree_reply(client.xcb(), xcb_query_tree(client.xcb(), window), nullptr));
}

// Window managers put a window into frame windows, which are nested at most this deep.
constexpr int deepestFrame = 4;

} // namespace

bool WindowFacts::exists(xcb_window_t window) const {
    return attributes(client, window) != nullptr;
}

bool WindowFacts::viewable(xcb_window_t window) const {
    const auto reply = attributes(client, window);
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

bool WindowFacts::overrideRedirect(xcb_window_t window) const {
    const auto reply = attributes(client, window);
    return reply && reply->override_redirect != 0;
}

Box WindowFacts::box(xcb_window_t window) const {
    const auto sizeCookie = xcb_get_geometry(client.xcb(), window);
    const auto placeCookie = xcb_translate_coordinates(client.xcb(), window, client.root(), 0, 0);
    const Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(client.xcb(), sizeCookie, nullptr));
    const Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(client.xcb(), placeCookie, nullptr));
    if (!size || !place)
        return {};
    return {place->dst_x, place->dst_y, size->width, size->height};
}

std::vector<std::uint8_t> WindowFacts::bytes(xcb_window_t window, const std::string& property) const {
    const auto cookie =
        xcb_get_property(client.xcb(), 0, window, client.atom(property), XCB_ATOM_ANY, 0, 1 << 16);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(client.xcb(), cookie, nullptr));
    if (!reply)
        return {};
    const auto* value = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
    return {value, value + xcb_get_property_value_length(reply.get())};
}

std::vector<std::uint32_t> WindowFacts::numbers(xcb_window_t window, const std::string& property) const {
    const auto raw = bytes(window, property);
    std::vector<std::uint32_t> result(raw.size() / sizeof(std::uint32_t));
    if (!result.empty())
        std::memcpy(result.data(), raw.data(), result.size() * sizeof(std::uint32_t));
    return result;
}

std::string WindowFacts::text(xcb_window_t window, const std::string& property) const {
    const auto raw = bytes(window, property);
    return {raw.begin(), raw.end()};
}

std::vector<std::string> WindowFacts::atomNames(xcb_window_t window, const std::string& property) const {
    std::vector<std::string> names;
    for (const xcb_atom_t atom : numbers(window, property))
        names.push_back(client.nameOf(atom));
    return names;
}

bool WindowFacts::hasState(xcb_window_t window, const std::string& state) const {
    const auto states = numbers(window, "_NET_WM_STATE");
    return std::find(states.begin(), states.end(), client.atom(state)) != states.end();
}

xcb_window_t WindowFacts::focus() const {
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(client.xcb(), xcb_get_input_focus(client.xcb()), nullptr));
    return reply ? reply->focus : XCB_NONE;
}

xcb_window_t WindowFacts::active() const {
    const auto window = numbers(client.root(), "_NET_ACTIVE_WINDOW");
    return window.empty() ? XCB_NONE : window.front();
}

std::vector<xcb_window_t> WindowFacts::children(xcb_window_t window) const {
    const auto reply = tree(client, window);
    if (!reply)
        return {};
    const xcb_window_t* first = xcb_query_tree_children(reply.get());
    return {first, first + xcb_query_tree_children_length(reply.get())};
}

xcb_window_t WindowFacts::topLevel(xcb_window_t window) const {
    for (;;) {
        const auto reply = tree(client, window);
        if (!reply || reply->parent == XCB_NONE)
            return XCB_NONE;
        if (reply->parent == client.root())
            return window;
        window = reply->parent;
    }
}

bool WindowFacts::isAbove(xcb_window_t first, xcb_window_t second) const {
    const auto stack = children(client.root());
    const auto upper = std::find(stack.begin(), stack.end(), topLevel(first));
    const auto lower = std::find(stack.begin(), stack.end(), topLevel(second));
    return upper != stack.end() && lower != stack.end() && upper > lower;
}

pid_t WindowFacts::process(xcb_window_t window) const {
    const xcb_res_client_id_spec_t wanted{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const Reply<xcb_res_query_client_ids_reply_t> reply(xcb_res_query_client_ids_reply(
        client.xcb(), xcb_res_query_client_ids(client.xcb(), 1, &wanted), nullptr));
    if (!reply)
        return 0;
    for (auto each = xcb_res_query_client_ids_ids_iterator(reply.get()); each.rem > 0;
         xcb_res_client_id_value_next(&each))
        if (xcb_res_client_id_value_value_length(each.data) > 0)
            return static_cast<pid_t>(*xcb_res_client_id_value_value(each.data));
    return 0;
}

std::vector<xcb_window_t> WindowFacts::windowsOf(pid_t process) const {
    std::vector<xcb_window_t> found;
    for (const xcb_window_t window : children(client.root()))
        collect(window, process, deepestFrame, found);
    return found;
}

void WindowFacts::collect(xcb_window_t window, pid_t process, int depth,
                          std::vector<xcb_window_t>& found) const {
    if (!viewable(window))
        return;
    if (this->process(window) == process) {
        found.push_back(window);
        return;
    }
    if (depth == 0)
        return;
    for (const xcb_window_t child : children(window))
        collect(child, process, depth - 1, found);
}

Picture WindowFacts::screenshot() const {
    return screenshot({0, 0, client.screen().width_in_pixels, client.screen().height_in_pixels});
}

Picture WindowFacts::screenshot(const Box& box) const {
    return read(client.root(), box);
}

Picture WindowFacts::content(xcb_window_t window) const {
    const Box place = box(window);
    return read(window, {0, 0, place.width, place.height});
}

Picture WindowFacts::read(xcb_drawable_t drawable, const Box& box) const {
    const auto cookie =
        xcb_get_image(client.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, static_cast<std::int16_t>(box.x),
                      static_cast<std::int16_t>(box.y), static_cast<std::uint16_t>(box.width),
                      static_cast<std::uint16_t>(box.height), ~0U);
    const Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(client.xcb(), cookie, nullptr));
    if (!reply)
        return {};
    Picture picture{box.width, box.height,
                    std::vector<std::uint32_t>(std::size_t(box.width) * std::size_t(box.height))};
    std::memcpy(picture.pixels.data(), xcb_get_image_data(reply.get()),
                picture.pixels.size() * sizeof(std::uint32_t));
    for (std::uint32_t& pixel : picture.pixels)
        pixel &= 0xffffff;
    return picture;
}

} // namespace mirrolet::harness
