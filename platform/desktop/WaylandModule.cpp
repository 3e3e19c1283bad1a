#include "platform/desktop/WaylandModule.h"

#include <dlfcn.h>
#include <filesystem>
#include <system_error>
#include <utility>

namespace mirrolet::platform::desktop {

namespace {

constexpr auto fileName = "mirrolet-wayland.so";

/// Returns the module's handle, or nullptr. The module stays loaded until the process ends, because its
/// threads and its objects are used until then.
void* open(const std::filesystem::path& folder) {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error)
        return nullptr;
    const auto beside = program.parent_path() / fileName;
    const auto installed = program.parent_path() / folder / fileName;
    return dlopen((std::filesystem::exists(beside, error) ? beside : installed).c_str(), RTLD_NOW);
}

} // namespace

WaylandParts loadWaylandModule(const std::string& folder, std::unique_ptr<Desktop> shown) {
    auto* module = open(folder);
    void* symbol = module ? dlsym(module, "mirroletWaylandParts") : nullptr;
    if (!symbol) {
        const char* problem = dlerror();
        return {std::move(shown), std::string("only windows of X11 applications can be seen and mirrored: ") +
                                      (problem ? problem : "the Wayland module cannot be found")};
    }
    WaylandParts parts;
    reinterpret_cast<MakeWaylandParts*>(symbol)(std::move(shown), parts); // NOLINT: dlsym knows no types.
    return parts;
}

} // namespace mirrolet::platform::desktop
