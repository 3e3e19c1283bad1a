#include "tests/desktop/harness/plasma/PlasmaWindows.h"

#include <algorithm>
#include <plasma-window-management-client-protocol.h>

namespace mirrolet::harness {

namespace {

constexpr std::uint32_t active = ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE;
constexpr std::uint32_t minimized = ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MINIMIZED;

template <typename Sender, typename... Values>
void ignore(void* /*self*/, Sender* /*from*/, Values... /*all*/) {}

PlasmaWindows::Window& windowIn(void* data) {
    return *static_cast<PlasmaWindows::Window*>(data);
}

org_kde_plasma_window_listener makeWindowListener() {
    org_kde_plasma_window_listener on{};
    on.pid_changed = [](void* self, org_kde_plasma_window*, std::uint32_t process) {
        windowIn(self).process = static_cast<pid_t>(process);
    };
    on.state_changed = [](void* self, org_kde_plasma_window*, std::uint32_t state) {
        windowIn(self).state = state;
    };
    on.geometry = [](void* self, org_kde_plasma_window*, std::int32_t x, std::int32_t y, std::uint32_t width,
                     std::uint32_t height) {
        windowIn(self).frame = {x, y, static_cast<int>(width), static_cast<int>(height)};
    };
    on.unmapped = [](void* self, org_kde_plasma_window*) { windowIn(self).isGone = true; };
    on.virtual_desktop_changed = ignore;
    on.themed_icon_name_changed = ignore;
    on.initial_state = ignore;
    on.parent_window = ignore;
    on.icon_changed = ignore;
    on.title_changed = ignore;
    on.app_id_changed = ignore;
    on.virtual_desktop_entered = ignore;
    on.virtual_desktop_left = ignore;
    on.application_menu = ignore;
    return on;
}

} // namespace

PlasmaWindows::PlasmaWindows(const PlasmaSession& session)
    : client(session), manager(client.bind<org_kde_plasma_window_management>(
                           org_kde_plasma_window_management_interface,
                           ORG_KDE_PLASMA_WINDOW_MANAGEMENT_WINDOW_WITH_UUID_SINCE_VERSION)) {
    static const auto listener = [] {
        org_kde_plasma_window_management_listener on{};
        on.show_desktop_changed = ignore;
        on.window = ignore;
        on.stacking_order_changed = ignore;
        on.stacking_order_uuid_changed = ignore;
        on.window_with_uuid = [](void* self, org_kde_plasma_window_management*, std::uint32_t,
                                 const char* uuid) { static_cast<PlasmaWindows*>(self)->add(uuid); };
        return on;
    }();
    org_kde_plasma_window_management_add_listener(manager, &listener, this);
    client.sync();
}

PlasmaWindows::~PlasmaWindows() {
    for (const auto& window : windows)
        org_kde_plasma_window_destroy(window->object);
    org_kde_plasma_window_management_destroy(manager);
}

void PlasmaWindows::add(const char* uuid) {
    static const auto listener = makeWindowListener();
    windows.push_back(std::make_unique<Window>());
    windows.back()->object = org_kde_plasma_window_management_get_window_by_uuid(manager, uuid);
    org_kde_plasma_window_add_listener(windows.back()->object, &listener, windows.back().get());
}

/// Syncs twice. The first sync announces a new window and requests its description, and the second sync
/// receives the description.
PlasmaWindows::Window PlasmaWindows::find(pid_t process) const {
    client.sync();
    client.sync();
    const auto found = std::ranges::find_if(
        windows, [&](const auto& window) { return !window->isGone && window->process == process; });
    return found == windows.end() ? Window{.isGone = true} : **found;
}

bool PlasmaWindows::isActive(pid_t process) const {
    return (find(process).state & active) != 0;
}

bool PlasmaWindows::isMinimized(pid_t process) const {
    return (find(process).state & minimized) != 0;
}

void PlasmaWindows::activate(pid_t process) const {
    request(process, active, active);
}

void PlasmaWindows::minimize(pid_t process) const {
    request(process, minimized, minimized);
}

void PlasmaWindows::close(pid_t process) const {
    if (const Window window = find(process); !window.isGone)
        org_kde_plasma_window_close(window.object);
    client.sync();
}

void PlasmaWindows::request(pid_t process, std::uint32_t flags, std::uint32_t state) const {
    if (const Window window = find(process); !window.isGone)
        org_kde_plasma_window_set_state(window.object, flags, state);
    client.sync();
}

} // namespace mirrolet::harness
