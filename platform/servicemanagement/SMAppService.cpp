#include "platform/servicemanagement/SMAppService.h"

#include "platform/foundation/GLibPointer.h"
#include "platform/servicemanagement/AutostartEntry.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace mirrolet::platform {

namespace {

std::string runningProgram() {
    // A program in an AppImage runs from a temporary path, which is gone once the program has ended. The path
    // of the AppImage itself stays valid.
    if (const char* image = std::getenv("APPIMAGE"); image && *image == '/')
        return image;
    std::error_code error;
    std::string path = std::filesystem::read_symlink("/proc/self/exe", error).string();
    // The kernel appends this text to the path after an upgrade has replaced the file.
    constexpr std::string_view deleted = " (deleted)";
    if (path.ends_with(deleted))
        path.resize(path.size() - deleted.size());
    return path;
}

/// Returns the path of the installed program if there is one, because a build folder may be gone at the next
/// login.
std::string installedProgram() {
    std::string running = runningProgram();
    const auto name = std::filesystem::path(running).filename().string();
    const GLibPointer<char> found(g_find_program_in_path(name.c_str()));
    return found && *found == '/' ? std::string(found.get()) : running;
}

} // namespace

const SMAppService& SMAppService::mainApp() {
    static const SMAppService service(installedProgram());
    return service;
}

SMAppService::Status SMAppService::status() const {
    const auto own = AutostartEntry::own();
    const auto effective = own.exists() ? std::optional(own) : AutostartEntry::systemWide();
    return effective && effective->isOn() ? Status::enabled : Status::notRegistered;
}

std::optional<NSError> SMAppService::registerService() const {
    if (status() == Status::enabled)
        return std::nullopt;
    const auto systemWide = AutostartEntry::systemWide();
    if (auto error = AutostartEntry::own().write(program, true, systemWide))
        return error;
    if (status() == Status::enabled)
        return std::nullopt;
    return NSError{"The login item was written, but the desktop would not start “" + program + "” with it."};
}

std::optional<NSError> SMAppService::unregisterService() const {
    const auto systemWide = AutostartEntry::systemWide();
    if (systemWide && systemWide->isOn())
        return AutostartEntry::own().write(program, false, systemWide);
    return AutostartEntry::own().remove();
}

} // namespace mirrolet::platform
