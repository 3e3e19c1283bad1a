#include "platform/desktop/wayland/plasma/VirtualDesktops.h"

#include <plasma-virtual-desktop-client-protocol.h>

namespace mirrolet::platform::desktop::wayland {

namespace {
constexpr std::uint32_t desktopsVersion = 2;
}

struct VirtualDesktops::Desktop {
    Desktop(VirtualDesktops& owner, std::string identifier)
        : owner(owner), identifier(std::move(identifier)),
          proxy(org_kde_plasma_virtual_desktop_management_get_virtual_desktop(owner.management,
                                                                              this->identifier.c_str())) {
        using Proxy = org_kde_plasma_virtual_desktop;
        static const org_kde_plasma_virtual_desktop_listener listener = [] {
            // Later descriptions of the protocol have more events, which version 2 does not send.
            org_kde_plasma_virtual_desktop_listener events{};
            events.activated = [](void* self, Proxy*) { static_cast<Desktop*>(self)->activated(); };
            // These events are ignored. After `deactivated`, the next desktop sends `activated`.
            events.desktop_id = [](void*, Proxy*, const char*) {};
            events.name = [](void*, Proxy*, const char*) {};
            events.deactivated = [](void*, Proxy*) {};
            events.done = [](void*, Proxy*) {};
            events.removed = [](void*, Proxy*) {};
            return events;
        }();
        org_kde_plasma_virtual_desktop_add_listener(proxy, &listener, this);
    }
    ~Desktop() { org_kde_plasma_virtual_desktop_destroy(proxy); }
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    void activated() const {
        const MutexLock lock(owner.currentMutex);
        owner.currentDesktop = identifier;
    }

    VirtualDesktops& owner;
    const std::string identifier;
    org_kde_plasma_virtual_desktop* const proxy;
};

VirtualDesktops::VirtualDesktops(WaylandConnection& connection)
    : management(connection.bind<org_kde_plasma_virtual_desktop_management>(
          org_kde_plasma_virtual_desktop_management_interface, desktopsVersion)) {
    static const org_kde_plasma_virtual_desktop_management_listener listener = {
        .desktop_created = [](void* self, org_kde_plasma_virtual_desktop_management*, const char* identifier,
                              std::uint32_t) { static_cast<VirtualDesktops*>(self)->add(identifier); },
        .desktop_removed =
            [](void* self, org_kde_plasma_virtual_desktop_management*, const char* identifier) {
                static_cast<VirtualDesktops*>(self)->remove(identifier);
            },
        .done = [](void*, org_kde_plasma_virtual_desktop_management*) {},
        .rows = [](void*, org_kde_plasma_virtual_desktop_management*, std::uint32_t) {},
    };
    if (management)
        org_kde_plasma_virtual_desktop_management_add_listener(management, &listener, this);
}

VirtualDesktops::~VirtualDesktops() {
    desktops.clear();
    if (management)
        org_kde_plasma_virtual_desktop_management_destroy(management);
}

std::string VirtualDesktops::current() const {
    const MutexLock lock(currentMutex);
    return currentDesktop;
}

void VirtualDesktops::add(const char* identifier) {
    desktops[identifier] = std::make_unique<Desktop>(*this, identifier);
}

void VirtualDesktops::remove(const char* identifier) {
    desktops.erase(identifier);
}

} // namespace mirrolet::platform::desktop::wayland
