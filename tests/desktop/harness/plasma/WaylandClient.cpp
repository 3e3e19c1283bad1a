#include "tests/desktop/harness/plasma/WaylandClient.h"

#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/plasma/PlasmaSession.h"

#include <algorithm>
#include <wayland-client.h>

namespace mirrolet::harness {

WaylandClient::WaylandClient(const PlasmaSession& session)
    : display(wl_display_connect(session.waylandSocket().c_str())) {
    if (display == nullptr)
        throw HarnessError("cannot connect to " + session.waylandSocket());
    static const wl_registry_listener listener{
        [](void* self, wl_registry*, std::uint32_t name, const char* interface, std::uint32_t version) {
            static_cast<WaylandClient*>(self)->globals[interface] = {name, version};
        },
        [](void*, wl_registry*, std::uint32_t) {}};
    registry = wl_display_get_registry(display);
    wl_registry_add_listener(registry, &listener, this);
    sync();
}

WaylandClient::~WaylandClient() {
    wl_registry_destroy(registry);
    wl_display_disconnect(display);
}

bool WaylandClient::offers(const wl_interface& type) const {
    return globals.contains(type.name);
}

void* WaylandClient::bindGlobal(const wl_interface& type, std::uint32_t version) const {
    const auto found = globals.find(type.name);
    if (found == globals.end())
        throw HarnessError(std::string("the compositor does not offer ") + type.name);
    const auto [name, offered] = found->second;
    return wl_registry_bind(registry, name, &type, std::min(version, offered));
}

void WaylandClient::sync() const {
    if (wl_display_roundtrip(display) < 0)
        throw HarnessError("the connection to the compositor is lost");
}

} // namespace mirrolet::harness
