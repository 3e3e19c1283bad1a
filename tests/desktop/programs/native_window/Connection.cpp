#include "tests/desktop/programs/native_window/Connection.h"

#include <cstdlib>
#include <iostream>
#include <string_view>
#include <xdg-decoration-unstable-v1-client-protocol.h>
#include <xdg-shell-client-protocol.h>

namespace {

[[noreturn]] void give(const char* reason) {
    std::cerr << "native_window: " << reason << std::endl;
    std::exit(1);
}

template <typename T>
void bindAs(T*& global, wl_registry* registry, std::uint32_t name, const wl_interface& type,
            std::uint32_t version) {
    global = static_cast<T*>(wl_registry_bind(registry, name, &type, version));
}

} // namespace

Connection::Connection() : display(wl_display_connect(nullptr)) {
    if (display == nullptr)
        give("no compositor");
    static const wl_registry_listener listener{
        [](void* self, wl_registry* registry, std::uint32_t name, const char* interface, std::uint32_t) {
            static_cast<Connection*>(self)->bind(registry, name, interface);
        },
        [](void*, wl_registry*, std::uint32_t) {}};
    wl_registry* registry = wl_display_get_registry(display);
    wl_registry_add_listener(registry, &listener, this);
    wl_display_roundtrip(display);
    if (compositor == nullptr || memory == nullptr || seat == nullptr || shell == nullptr)
        give("the compositor lacks what a window needs");
    static const xdg_wm_base_listener answer{
        [](void*, xdg_wm_base* base, std::uint32_t serial) { xdg_wm_base_pong(base, serial); }};
    xdg_wm_base_add_listener(shell, &answer, nullptr);
}

Connection::~Connection() {
    wl_display_disconnect(display);
}

void Connection::bind(wl_registry* registry, std::uint32_t name, const char* interface) {
    const std::string_view type(interface);
    if (type == wl_compositor_interface.name)
        bindAs(compositor, registry, name, wl_compositor_interface, 4);
    else if (type == wl_shm_interface.name)
        bindAs(memory, registry, name, wl_shm_interface, 1);
    else if (type == wl_seat_interface.name)
        bindAs(seat, registry, name, wl_seat_interface, 1);
    else if (type == xdg_wm_base_interface.name)
        bindAs(shell, registry, name, xdg_wm_base_interface, 1);
    else if (type == zxdg_decoration_manager_v1_interface.name)
        bindAs(decorations, registry, name, zxdg_decoration_manager_v1_interface, 1);
}
