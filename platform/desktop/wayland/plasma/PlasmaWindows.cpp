#include "platform/desktop/wayland/plasma/PlasmaWindows.h"

#include <plasma-window-management-client-protocol.h>
#include <sstream>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

namespace {

/// The highest version of the protocol to use. From version 17 on, the program has to ask for the stacking
/// order.
#ifdef ORG_KDE_PLASMA_WINDOW_CLIENT_GEOMETRY_SINCE_VERSION
constexpr std::uint32_t windowsVersion = ORG_KDE_PLASMA_WINDOW_CLIENT_GEOMETRY_SINCE_VERSION;
#else
constexpr std::uint32_t windowsVersion = 16;
#endif

std::vector<std::string> separated(const char* text) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, ';');)
        if (!part.empty())
            parts.push_back(part);
    return parts;
}

PixelRect toRect(std::int32_t x, std::int32_t y, std::uint32_t width, std::uint32_t height) {
    return {x, y, static_cast<int>(width), static_cast<int>(height)};
}

} // namespace

/// Receives the events of one window and writes each change into the model.
class PlasmaWindows::Window {
  public:
    using Proxy = org_kde_plasma_window;

    Window(PlasmaWindows& owner, const char* uuid, WindowNumber number)
        : owner(owner), proxy(org_kde_plasma_window_management_get_window_by_uuid(owner.management, uuid)) {
        facts.number = number;
        facts.uuid = uuid;
        org_kde_plasma_window_add_listener(proxy, &listener, this);
    }
    ~Window() { org_kde_plasma_window_destroy(proxy); }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    [[nodiscard]] const std::string& uuid() const { return facts.uuid; }

  private:
    template <typename Change> static void change(void* self, Change apply) {
        auto& window = *static_cast<Window*>(self);
        apply(window.facts);
        if (window.complete)
            window.owner.theModel.publish(window.facts);
    }
    static void complete_(void* self) {
        auto& window = *static_cast<Window*>(self);
        window.complete = true;
        window.owner.theModel.publish(window.facts);
    }
    static const org_kde_plasma_window_listener listener;

    PlasmaWindows& owner;
    Proxy* const proxy;
    PlasmaWindow facts;
    bool complete = false; ///< True once the compositor has described the whole window.
};

const org_kde_plasma_window_listener PlasmaWindows::Window::listener = [] {
    org_kde_plasma_window_listener events{};
    events.title_changed = [](void* self, Proxy*, const char* title) {
        change(self, [&](PlasmaWindow& window) { window.title = title; });
    };
    events.app_id_changed = [](void* self, Proxy*, const char* applicationId) {
        change(self, [&](PlasmaWindow& window) { window.applicationId = applicationId; });
    };
    events.state_changed = [](void* self, Proxy*, std::uint32_t state) {
        change(self, [&](PlasmaWindow& window) { window.state = state; });
    };
    events.virtual_desktop_changed = [](void*, Proxy*, std::int32_t) {};
    events.themed_icon_name_changed = [](void*, Proxy*, const char*) {};
    events.unmapped = [](void* self, Proxy*) {
        auto& window = *static_cast<Window*>(self);
        window.owner.remove(window);
    };
    events.initial_state = [](void* self, Proxy*) { complete_(self); };
    events.parent_window = [](void*, Proxy*, Proxy*) {};
    events.geometry = [](void* self, Proxy*, std::int32_t x, std::int32_t y, std::uint32_t width,
                         std::uint32_t height) {
        change(self, [&](PlasmaWindow& window) { window.frame = toRect(x, y, width, height); });
    };
    events.icon_changed = [](void*, Proxy*) {};
    events.pid_changed = [](void* self, Proxy*, std::uint32_t pid) {
        change(self, [&](PlasmaWindow& window) { window.pid = static_cast<std::int32_t>(pid); });
    };
    events.virtual_desktop_entered = [](void* self, Proxy*, const char* desktop) {
        change(self, [&](PlasmaWindow& window) { window.desktops.insert(desktop); });
    };
    events.virtual_desktop_left = [](void* self, Proxy*, const char* desktop) {
        change(self, [&](PlasmaWindow& window) { window.desktops.erase(desktop); });
    };
    events.application_menu = [](void*, Proxy*, const char*, const char*) {};
    events.activity_entered = [](void*, Proxy*, const char*) {};
    events.activity_left = [](void*, Proxy*, const char*) {};
    events.resource_name_changed = [](void* self, Proxy*, const char* name) {
        change(self, [&](PlasmaWindow& window) { window.resourceName = name; });
    };
#ifdef ORG_KDE_PLASMA_WINDOW_CLIENT_GEOMETRY_SINCE_VERSION
    events.client_geometry = [](void* self, Proxy*, std::int32_t x, std::int32_t y, std::uint32_t width,
                                std::uint32_t height) {
        change(self, [&](PlasmaWindow& window) { window.content = toRect(x, y, width, height); });
    };
#endif
    return events;
}();

PlasmaWindows::PlasmaWindows(WaylandConnection& connection)
    : management(connection.bind<org_kde_plasma_window_management>(org_kde_plasma_window_management_interface,
                                                                   windowsVersion)) {
    using Management = org_kde_plasma_window_management;
    static const org_kde_plasma_window_management_listener listener = [] {
        org_kde_plasma_window_management_listener events{};
        events.show_desktop_changed = [](void*, Management*, std::uint32_t) {};
        events.window = [](void*, Management*, std::uint32_t) {};
        events.stacking_order_changed = [](void*, Management*, wl_array*) {};
        events.stacking_order_uuid_changed = [](void* self, Management*, const char* uuids) {
            static_cast<PlasmaWindows*>(self)->theModel.restack(separated(uuids));
        };
        events.window_with_uuid = [](void* self, Management*, std::uint32_t, const char* uuid) {
            static_cast<PlasmaWindows*>(self)->add(uuid);
        };
#ifdef ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STACKING_ORDER_CHANGED_2_SINCE_VERSION
        events.stacking_order_changed_2 = [](void* self, Management*) {
            static_cast<PlasmaWindows*>(self)->askForStackingOrder();
        };
#endif
        return events;
    }();
    org_kde_plasma_window_management_add_listener(management, &listener, this);
#ifdef ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STACKING_ORDER_CHANGED_2_SINCE_VERSION
    // KWin reports only later changes by itself.
    if (org_kde_plasma_window_management_get_version(management) >=
        ORG_KDE_PLASMA_WINDOW_MANAGEMENT_GET_STACKING_ORDER_SINCE_VERSION)
        askForStackingOrder();
#endif
}

PlasmaWindows::~PlasmaWindows() {
    proxies.clear();
    org_kde_plasma_window_management_destroy(management);
}

void PlasmaWindows::add(const char* uuid) {
    if (!proxies.contains(uuid))
        proxies.emplace(uuid, std::make_unique<Window>(*this, uuid, ++lastNumber));
}

void PlasmaWindows::remove(const Window& window) {
    // The copy is needed because the next line destroys the window.
    const auto uuid = window.uuid(); // NOLINT(performance-unnecessary-copy-initialization)
    proxies.erase(uuid);
    theModel.remove(uuid);
}

#ifdef ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STACKING_ORDER_CHANGED_2_SINCE_VERSION
void PlasmaWindows::askForStackingOrder() {
    struct Order {
        PlasmaWindows& owner;
        std::vector<std::string> uuids;
    };
    static const org_kde_plasma_stacking_order_listener listener = {
        .window = [](void* self, org_kde_plasma_stacking_order*,
                     const char* uuid) { static_cast<Order*>(self)->uuids.emplace_back(uuid); },
        .done =
            [](void* self, org_kde_plasma_stacking_order* proxy) {
                const std::unique_ptr<Order> order(static_cast<Order*>(self));
                order->owner.theModel.restack(std::move(order->uuids));
                org_kde_plasma_stacking_order_destroy(proxy);
            },
    };
    auto* order = org_kde_plasma_window_management_get_stacking_order(management);
    org_kde_plasma_stacking_order_add_listener(order, &listener, new Order{*this, {}}); // Freed by `done`.
}
#endif

} // namespace mirrolet::platform::desktop::wayland
