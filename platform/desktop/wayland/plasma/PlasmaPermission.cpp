#include "platform/desktop/wayland/plasma/PlasmaPermission.h"

#include "platform/foundation/GLibPointer.h"

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace mirrolet::platform::desktop::wayland {

namespace {

constexpr auto entryName = "app.mirrolet.Mirrolet.desktop";
constexpr auto interfacesKey = "X-KDE-Wayland-Interfaces";
constexpr std::string_view neededInterface = "org_kde_plasma_window_management";

void run(const char* program) {
    std::string seconds = "5";
    std::string timeout = "timeout";
    std::string name = program;
    std::array<char*, 4> arguments{timeout.data(), seconds.data(), name.data(), nullptr};
    const auto flags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_STDOUT_TO_DEV_NULL |
                                                G_SPAWN_STDERR_TO_DEV_NULL);
    // A missing program is ignored, because each version of Plasma has only one of the two.
    g_spawn_sync(nullptr, arguments.data(), nullptr, flags, nullptr, nullptr, nullptr, nullptr, nullptr,
                 nullptr);
}

} // namespace

bool entryAsksForWindows() {
    const GLibPointer<GDesktopAppInfo> entry(g_desktop_app_info_new(entryName));
    if (!entry)
        return false;
    const GLibPointer<char> interfaces(g_desktop_app_info_get_string(entry.get(), interfacesKey));
    const char* program = g_app_info_get_executable(G_APP_INFO(entry.get()));
    if (!interfaces || !program ||
        std::string_view(interfaces.get()).find(neededInterface) == std::string_view::npos)
        return false;
    std::error_code error;
    return std::filesystem::equivalent(program, "/proc/self/exe", error);
}

void refreshDesktopEntries() {
    run("kbuildsycoca6");
    run("kbuildsycoca5");
}

} // namespace mirrolet::platform::desktop::wayland
