#include "tests/desktop/programs/native_window/Window.h"

#include <algorithm>
#include <iostream>
#include <span>
#include <unistd.h>
#include <xdg-decoration-unstable-v1-client-protocol.h>
#include <xdg-shell-client-protocol.h>

namespace {

constexpr int menuWidth = 160;
constexpr int menuHeight = 120;
constexpr auto menuColour = "c02020";
constexpr int toXKeyCode = 8;

/// Prints key events in the same form as the program call_window does, with X key codes.
const wl_keyboard_listener keyPrinter{
    .keymap = [](void*, wl_keyboard*, std::uint32_t, int file, std::uint32_t) { close(file); },
    .enter = [](void*, wl_keyboard*, std::uint32_t, wl_surface*,
                wl_array*) { std::cout << "focus in" << std::endl; },
    .leave = [](void*, wl_keyboard*, std::uint32_t, wl_surface*) { std::cout << "focus out" << std::endl; },
    .key =
        [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t key, std::uint32_t state) {
            std::cout << "key " << key + toXKeyCode
                      << (state == WL_KEYBOARD_KEY_STATE_PRESSED ? " press" : " release") << std::endl;
        },
    .modifiers = [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
                    std::uint32_t) {},
    .repeat_info = [](void*, wl_keyboard*, std::int32_t, std::int32_t) {},
};

bool has(const wl_array* states, xdg_toplevel_state wanted) {
    const auto* first = static_cast<const std::uint32_t*>(states->data);
    const std::span all(first, states->size / sizeof(std::uint32_t));
    return std::ranges::find(all, static_cast<std::uint32_t>(wanted)) != all.end();
}

} // namespace

Window::Window(Connection& connection, Scene& scene, const Options& options)
    : connection(connection), scene(scene), surface(wl_compositor_create_surface(connection.compositor)),
      role(xdg_wm_base_get_xdg_surface(connection.shell, surface)), top(xdg_surface_get_toplevel(role)),
      ownWidth(options.width), ownHeight(options.height), width(options.width), height(options.height) {
    static const xdg_surface_listener surfaceListener{[](void* self, xdg_surface*, std::uint32_t serial) {
        static_cast<Window*>(self)->configure(serial);
    }};
    static const xdg_toplevel_listener topListener{
        .configure = [](void* self, xdg_toplevel*, std::int32_t w, std::int32_t h,
                        wl_array* states) { static_cast<Window*>(self)->configureTop(w, h, states); },
        .close = [](void* self, xdg_toplevel*) { static_cast<Window*>(self)->closed = true; },
        .configure_bounds = [](void*, xdg_toplevel*, std::int32_t, std::int32_t) {},
        .wm_capabilities = [](void*, xdg_toplevel*, wl_array*) {},
    };
    xdg_surface_add_listener(role, &surfaceListener, this);
    xdg_toplevel_add_listener(top, &topListener, this);
    setTitle(options.title);
    setApplicationId(options.applicationId);
    if (options.decorated && connection.decorations != nullptr) {
        auto* decoration = zxdg_decoration_manager_v1_get_toplevel_decoration(connection.decorations, top);
        zxdg_toplevel_decoration_v1_set_mode(decoration, ZXDG_TOPLEVEL_DECORATION_V1_MODE_SERVER_SIDE);
    }
    if (options.fullScreen)
        setFullScreen(true);
    listenToKeys();
    wl_surface_commit(surface);
}

void Window::listenToKeys() {
    static const wl_seat_listener listener{
        .capabilities =
            [](void*, wl_seat* seat, std::uint32_t capabilities) {
                if ((capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0)
                    wl_keyboard_add_listener(wl_seat_get_keyboard(seat), &keyPrinter, nullptr);
            },
        .name = [](void*, wl_seat*, const char*) {},
    };
    wl_seat_add_listener(connection.seat, &listener, nullptr);
}

void Window::setTitle(const std::string& title) {
    xdg_toplevel_set_title(top, title.c_str());
}

void Window::setApplicationId(const std::string& id) {
    xdg_toplevel_set_app_id(top, id.c_str());
}

void Window::resize(int newWidth, int newHeight) {
    ownWidth = width = newWidth;
    ownHeight = height = newHeight;
    paint();
}

void Window::setFullScreen(bool wanted) {
    if (wanted)
        xdg_toplevel_set_fullscreen(top, nullptr);
    else
        xdg_toplevel_unset_fullscreen(top);
}

void Window::minimize() {
    xdg_toplevel_set_minimized(top);
}

/// Takes a size from the compositor only while the window is full screen or maximized. Any other size is only
/// a proposal, and may be older than the latest resize.
void Window::configureTop(int newWidth, int newHeight, const wl_array* states) {
    const bool isDemanded =
        has(states, XDG_TOPLEVEL_STATE_FULLSCREEN) || has(states, XDG_TOPLEVEL_STATE_MAXIMIZED);
    width = isDemanded && newWidth > 0 ? newWidth : ownWidth;
    height = isDemanded && newHeight > 0 ? newHeight : ownHeight;
}

void Window::configure(std::uint32_t serial) {
    configured = true;
    xdg_surface_ack_configure(role, serial);
    paint();
}

void Window::paint() {
    if (!configured)
        return;
    SharedBuffer* buffer = freeBuffer();
    missed = buffer == nullptr;
    if (missed)
        return;
    scene.paint(*buffer);
    buffer->showOn(surface);
}

void Window::paintMissed() {
    if (missed)
        paint();
}

/// Returns a buffer that has the window's size and may be painted, or nullptr if there is none.
SharedBuffer* Window::freeBuffer() {
    for (auto& buffer : buffers) {
        if (buffer && !buffer->isFree())
            continue;
        if (!buffer || buffer->width() != width || buffer->height() != height)
            buffer = std::make_unique<SharedBuffer>(connection.memory, width, height);
        return buffer.get();
    }
    return nullptr;
}

void Window::openMenu() {
    xdg_positioner* place = xdg_wm_base_create_positioner(connection.shell);
    xdg_positioner_set_size(place, menuWidth, menuHeight);
    xdg_positioner_set_anchor_rect(place, width - menuWidth / 2, height / 2, 1, 1);
    xdg_positioner_set_anchor(place, XDG_POSITIONER_ANCHOR_BOTTOM_RIGHT);
    xdg_positioner_set_gravity(place, XDG_POSITIONER_GRAVITY_BOTTOM_RIGHT);
    menuSurface = wl_compositor_create_surface(connection.compositor);
    menuRole = xdg_wm_base_get_xdg_surface(connection.shell, menuSurface);
    menu = xdg_surface_get_popup(menuRole, role, place);
    xdg_positioner_destroy(place);
    static const xdg_surface_listener listener{[](void* data, xdg_surface* surface, std::uint32_t serial) {
        auto& self = *static_cast<Window*>(data);
        xdg_surface_ack_configure(surface, serial);
        self.menuBuffer = std::make_unique<SharedBuffer>(self.connection.memory, menuWidth, menuHeight);
        Scene colour;
        colour.setColours(menuColour);
        colour.paint(*self.menuBuffer);
        self.menuBuffer->showOn(self.menuSurface);
    }};
    xdg_surface_add_listener(menuRole, &listener, this);
    wl_surface_commit(menuSurface);
}

void Window::closeMenu() {
    if (menu == nullptr)
        return;
    xdg_popup_destroy(menu);
    xdg_surface_destroy(menuRole);
    wl_surface_destroy(menuSurface);
    menu = nullptr;
}
