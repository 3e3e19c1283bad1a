#include "tests/desktop/harness/ext/ScriptedLists.h"

#include <ext-foreign-toplevel-list-v1-server-protocol.h>
#include <wayland-server.h>
#include <wlr-foreign-toplevel-management-unstable-v1-server-protocol.h>

namespace mirrolet::harness {

namespace {

void destroyHandle(wl_client*, wl_resource* resource) {
    wl_resource_destroy(resource);
}

/// The client under test only reads the list, so most requests do nothing.
const struct zwlr_foreign_toplevel_handle_v1_interface managedCalls = [] {
    struct zwlr_foreign_toplevel_handle_v1_interface calls {};
    calls.destroy = destroyHandle;
    return calls;
}();

} // namespace

void sendExtTitle(wl_resource* handle, const ScriptedWindow& window) {
    ext_foreign_toplevel_handle_v1_send_title(handle, window.title.c_str());
    ext_foreign_toplevel_handle_v1_send_done(handle);
}

void sendWlrTitle(wl_resource* handle, const ScriptedWindow& window) {
    zwlr_foreign_toplevel_handle_v1_send_title(handle, window.title.c_str());
    zwlr_foreign_toplevel_handle_v1_send_done(handle);
}

void sendStates(wl_resource* handle, const ScriptedWindow& window) {
    wl_array states;
    wl_array_init(&states);
    for (std::uint32_t state = 0; state < 32; ++state)
        if ((window.states >> state & 1U) != 0)
            *static_cast<std::uint32_t*>(wl_array_add(&states, sizeof state)) = state;
    zwlr_foreign_toplevel_handle_v1_send_state(handle, &states);
    zwlr_foreign_toplevel_handle_v1_send_done(handle);
    wl_array_release(&states);
}

void listWindow(ScriptedWindow& window, wl_resource* list) {
    static const struct ext_foreign_toplevel_handle_v1_interface calls { destroyHandle };
    auto* handle = wl_resource_create(wl_resource_get_client(list), &ext_foreign_toplevel_handle_v1_interface,
                                      wl_resource_get_version(list), 0);
    wl_resource_set_implementation(handle, &calls, &window, [](wl_resource* gone) {
        std::erase(static_cast<ScriptedWindow*>(wl_resource_get_user_data(gone))->listed, gone);
    });
    window.listed.push_back(handle);
    ext_foreign_toplevel_list_v1_send_toplevel(list, handle);
    ext_foreign_toplevel_handle_v1_send_identifier(handle, "scripted");
    if (!window.hidesApplication)
        ext_foreign_toplevel_handle_v1_send_app_id(handle, window.application.c_str());
    sendExtTitle(handle, window);
}

void manageWindow(ScriptedWindow& window, wl_resource* manager) {
    auto* handle =
        wl_resource_create(wl_resource_get_client(manager), &zwlr_foreign_toplevel_handle_v1_interface,
                           wl_resource_get_version(manager), 0);
    wl_resource_set_implementation(handle, &managedCalls, &window, [](wl_resource* gone) {
        std::erase(static_cast<ScriptedWindow*>(wl_resource_get_user_data(gone))->managed, gone);
    });
    window.managed.push_back(handle);
    zwlr_foreign_toplevel_manager_v1_send_toplevel(manager, handle);
    zwlr_foreign_toplevel_handle_v1_send_app_id(handle, window.application.c_str());
    zwlr_foreign_toplevel_handle_v1_send_title(handle, window.title.c_str());
    sendStates(handle, window);
}

} // namespace mirrolet::harness
