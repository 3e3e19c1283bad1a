#include "platform/desktop/x11/panel/WindowShadow.h"

#include "platform/desktop/PixelRects.h"
#include "platform/desktop/x11/panel/PanelStack.h"
#include "platform/desktop/x11/panel/SoftShadow.h"
#include "platform/desktop/x11/server/CompositingManager.h"
#include "platform/desktop/x11/server/XcbRectangle.h"

#include <xcb/shape.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

// The largest side of a panel whose shadow still fits the 16 bits that the protocol has for lengths.
constexpr int largestSide = 16384;

/// Returns a visual for translucent windows. Returns XCB_NONE if the server has no such visual.
xcb_visualid_t argbVisual(const xcb_screen_t& screen) {
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem; xcb_depth_next(&depth)) {
        if (depth.data->depth != argbDepth)
            continue;
        for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem; xcb_visualtype_next(&visual))
            if (visual.data->_class == XCB_VISUAL_CLASS_TRUE_COLOR && visual.data->red_mask == 0xff0000)
                return visual.data->visual_id;
    }
    return XCB_NONE;
}

} // namespace

WindowShadow::WindowShadow(X11Connection& connection, const PanelEvents& events,
                           CompositingManager& compositingManager, PanelStack& stack, xcb_window_t panel)
    : connection(connection), compositingManager(compositingManager), stack(stack), panel(panel),
      pixmap(connection) {
    subscriptions[0] = events.subscribe<xcb_map_notify_event_t>([this](const auto&) { panelMapped(); });
    subscriptions[1] = events.subscribe<xcb_unmap_notify_event_t>([this](const auto&) { panelUnmapped(); });
    subscriptions[2] = events.subscribe<xcb_configure_notify_event_t>([this](const auto& event) {
        panelConfigured({event.x, event.y, event.width, event.height});
    });
    subscriptions[3] = compositingManager.onChange([this] {
        const MutexLock lock(shadowMutex);
        update();
    });
}

WindowShadow::~WindowShadow() {
    for (auto& subscription : subscriptions)
        subscription = {};
    remove();
}

void WindowShadow::set(const PanelShadow& newShadow) {
    const MutexLock lock(shadowMutex);
    if (std::exchange(shadow, newShadow) == newShadow)
        return;
    painted = {};
    update();
}

void WindowShadow::setRadius(double newRadius) {
    const MutexLock lock(shadowMutex);
    radius = newRadius;
    update();
}

void WindowShadow::panelMapped() {
    // The panel's place is asked for, because an event tells the place only when the panel moves.
    const auto geometry =
        connection.reply<xcb_get_geometry_reply>(xcb_get_geometry(connection.xcb(), panel), windowGone);
    const MutexLock lock(shadowMutex);
    if (geometry)
        panelRect = {geometry->x, geometry->y, geometry->width, geometry->height};
    mapped = geometry != nullptr;
    update();
}

void WindowShadow::panelUnmapped() {
    const MutexLock lock(shadowMutex);
    mapped = false;
    update();
}

void WindowShadow::panelConfigured(const PixelRect& newRect) {
    const MutexLock lock(shadowMutex);
    if (std::exchange(panelRect, newRect) != newRect)
        update();
}

bool WindowShadow::wanted() const {
    return mapped && shadow.opacity > 0 && connection.extensions().shape && compositingManager.running() &&
           !isEmpty(panelRect) && std::max(panelRect.width, panelRect.height) <= largestSide;
}

PixelRect WindowShadow::place() const {
    const int reach = reachOf(shadow);
    const int down = static_cast<int>(std::lround(shadow.offset));
    return {panelRect.x - reach, panelRect.y - reach + down, panelRect.width + 2 * reach,
            panelRect.height + 2 * reach};
}

void WindowShadow::update() {
    if (!wanted())
        return remove();
    const bool isNew = !window;
    if (isNew)
        make();
    if (!window)
        return;
    const auto rect = place();
    const std::uint32_t values[] = {static_cast<std::uint32_t>(rect.x), static_cast<std::uint32_t>(rect.y),
                                    static_cast<std::uint32_t>(rect.width),
                                    static_cast<std::uint32_t>(rect.height)};
    xcb_configure_window(connection.xcb(), window.id(),
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values);
    paint();
    if (isNew) {
        stack.setShadow(panel, window.id());
        xcb_map_window(connection.xcb(), window.id());
    }
    connection.flush();
}

void WindowShadow::make() {
    const auto visual = argbVisual(connection.screen());
    if (visual == XCB_NONE)
        return;
    xcb_connection_t* xcb = connection.xcb();
    colours = {connection, xcb_generate_id(xcb)};
    xcb_create_colormap(xcb, XCB_COLORMAP_ALLOC_NONE, colours.id(), connection.root(), visual);
    window = {connection, xcb_generate_id(xcb)};
    const std::uint32_t values[] = {0, 1, colours.id()};
    xcb_create_window(xcb, argbDepth, window.id(), connection.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                      XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP, values);
    writeProperties();
    xcb_shape_rectangles(xcb, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, window.id(),
                         0, 0, 0, nullptr);
    painted = {};
}

/// Sets a window type for which compositing managers show neither an animation nor a shadow of their own.
void WindowShadow::writeProperties() const {
    const auto& atoms = connection.atoms();
    const std::uint32_t none = 0;
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, window.id(), atoms._NET_WM_WINDOW_TYPE,
                        XCB_ATOM_ATOM, 32, 1, &atoms._NET_WM_WINDOW_TYPE_DND);
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, window.id(), atoms._COMPTON_SHADOW,
                        XCB_ATOM_CARDINAL, 32, 1, &none);
}

void WindowShadow::remove() {
    if (!window)
        return;
    stack.setShadow(panel, XCB_WINDOW_NONE);
    window = {};
    colours = {};
    connection.flush();
}

void WindowShadow::paint() {
    const Painted wanted{{panelRect.width, panelRect.height}, radius};
    if (std::exchange(painted, wanted) == wanted)
        return;
    const auto full = pixmap.make(wanted.panel, radius, shadow);
    const std::uint32_t background = full.id(); // The window keeps the pixmap, so its id may be freed here.
    xcb_change_window_attributes(connection.xcb(), window.id(), XCB_CW_BACK_PIXMAP, &background);
    cutOut();
    xcb_clear_area(connection.xcb(), 0, window.id(), 0, 0, 0, 0);
}

/// Cuts the part that lies under the panel out of the shadow. Otherwise a compositing manager would blend
/// that part again for every frame of the mirror.
void WindowShadow::cutOut() const {
    const auto outer = place();
    const int inset = static_cast<int>(std::ceil(radius * 0.3)) + 1; // Keeps the hole off the round corners.
    const PixelRect hole{panelRect.x - outer.x + inset, panelRect.y - outer.y + inset,
                         panelRect.width - 2 * inset, panelRect.height - 2 * inset};
    const int right = hole.x + hole.width;
    const int below = hole.y + hole.height;
    const xcb_rectangle_t around[] = {toRectangle({0, 0, outer.width, hole.y}),
                                      toRectangle({0, hole.y, hole.x, hole.height}),
                                      toRectangle({right, hole.y, outer.width - right, hole.height}),
                                      toRectangle({0, below, outer.width, outer.height - below})};
    const auto all = toRectangle({0, 0, outer.width, outer.height});
    const bool holed = !isEmpty(hole) && hole.y >= 0;
    xcb_shape_rectangles(connection.xcb(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
                         XCB_CLIP_ORDERING_YX_BANDED, window.id(), 0, 0,
                         holed ? std::uint32_t(std::size(around)) : 1, holed ? around : &all);
}

} // namespace mirrolet::platform::desktop::x11
