#include "platform/desktop/applications/DesktopEntry.h"

#include "platform/foundation/GLibPointer.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

namespace mirrolet::platform::desktop {

namespace {

constexpr auto* group = G_KEY_FILE_DESKTOP_GROUP;

std::string orEmpty(char* allocated) {
    const GLibPointer<char> owned(allocated);
    return owned ? owned.get() : std::string();
}

std::string text(GKeyFile* file, const char* key) {
    return orEmpty(g_key_file_get_string(file, group, key, nullptr));
}

bool isTrue(GKeyFile* file, const char* key) {
    return g_key_file_get_boolean(file, group, key, nullptr);
}

std::vector<std::string> splitAt(const std::string& list, const char* separator) {
    const GLibPointer<char*> parts(g_strsplit(list.c_str(), separator, -1));
    std::vector<std::string> result;
    for (char** part = parts.get(); *part; ++part)
        result.emplace_back(*part);
    return result;
}

bool namesThisDesktop(GKeyFile* file, const char* key) {
    const auto* current = std::getenv("XDG_CURRENT_DESKTOP");
    const auto desktops = splitAt(current ? current : "", ":");
    const auto named = splitAt(text(file, key), ";");
    return std::any_of(named.begin(), named.end(), [&](const std::string& name) {
        return !name.empty() && std::find(desktops.begin(), desktops.end(), name) != desktops.end();
    });
}

bool isShown(GKeyFile* file) {
    if (isTrue(file, G_KEY_FILE_DESKTOP_KEY_NO_DISPLAY))
        return false;
    if (g_key_file_has_key(file, group, G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN, nullptr))
        return namesThisDesktop(file, G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN);
    return !namesThisDesktop(file, G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN);
}

std::vector<std::string> argumentsIn(const std::string& command) {
    char** parsed = nullptr;
    if (!g_shell_parse_argv(command.c_str(), nullptr, &parsed, nullptr))
        return {};
    const GLibPointer<char*> owned(parsed);
    std::vector<std::string> arguments;
    for (char** argument = parsed; *argument; ++argument)
        arguments.emplace_back(*argument);
    return arguments;
}

std::string commandName(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

/// Returns whether a program only runs what its arguments name, as an interpreter does. The name of such a
/// program does not identify the application. The name may end in a version, as in "python3.11".
bool runsAnything(const std::string& program) {
    static constexpr std::array<std::string_view, 28> names = {
        "env",    "sh",        "bash",   "dash",     "zsh",        "python", "perl",
        "ruby",   "node",      "java",   "electron", "wine",       "mono",   "flatpak",
        "snap",   "distrobox", "podman", "toolbox",  "docker",     "ssh",    "sudo",
        "pkexec", "nohup",     "setsid", "gjs",      "gtk-launch", "gio",    "x-terminal-emulator"};
    const auto end = program.find_last_not_of("0123456789.");
    const auto bare = std::string_view(program).substr(0, end == std::string::npos ? 0 : end + 1);
    return std::find(names.begin(), names.end(), bare) != names.end() || bare == "distrobox-enter";
}

std::string programIn(const std::vector<std::string>& arguments) {
    auto argument = arguments.begin();
    if (argument != arguments.end() && commandName(*argument) == "env") {
        ++argument;
        while (argument != arguments.end() &&
               (argument->starts_with("-") || argument->find('=') != std::string::npos))
            ++argument;
    }
    if (argument == arguments.end())
        return {};
    auto program = commandName(*argument);
    return runsAnything(program) ? std::string() : program;
}

void readWebApplication(DesktopEntry& entry, const std::vector<std::string>& arguments) {
    constexpr std::string_view byId = "--app-id=";
    for (const auto& argument : arguments) {
        if (argument.starts_with(byId))
            entry.webApplicationId = argument.substr(byId.size());
        if (argument.starts_with(byId) || argument.starts_with("--app="))
            entry.isWebApplication = true;
    }
    if (entry.startupWmClass.starts_with("crx_"))
        entry.isWebApplication = true;
}

DesktopEntry::Sandbox sandboxOf(GKeyFile* file, const std::vector<std::string>& arguments) {
    const bool runsFlatpak = !arguments.empty() && commandName(arguments.front()) == "flatpak";
    if (runsFlatpak || g_key_file_has_key(file, group, "X-Flatpak", nullptr))
        return DesktopEntry::Sandbox::flatpak;
    if (g_key_file_has_key(file, group, "X-SnapInstanceName", nullptr))
        return DesktopEntry::Sandbox::snap;
    return DesktopEntry::Sandbox::none;
}

} // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string_view content, const std::string& id,
                                              const std::string& path) {
    const GLibPointer<GKeyFile> file(g_key_file_new());
    if (content.empty() ||
        !g_key_file_load_from_data(file.get(), content.data(), content.size(), G_KEY_FILE_NONE, nullptr))
        return std::nullopt;
    if (text(file.get(), G_KEY_FILE_DESKTOP_KEY_TYPE) != G_KEY_FILE_DESKTOP_TYPE_APPLICATION ||
        isTrue(file.get(), G_KEY_FILE_DESKTOP_KEY_HIDDEN))
        return std::nullopt;
    const auto arguments = argumentsIn(text(file.get(), G_KEY_FILE_DESKTOP_KEY_EXEC));
    DesktopEntry entry;
    entry.id = id;
    entry.path = path;
    entry.name = orEmpty(
        g_key_file_get_locale_string(file.get(), group, G_KEY_FILE_DESKTOP_KEY_NAME, nullptr, nullptr));
    if (entry.name.empty())
        entry.name = id;
    entry.startupWmClass = text(file.get(), G_KEY_FILE_DESKTOP_KEY_STARTUP_WM_CLASS);
    entry.program = programIn(arguments);
    entry.sandbox = sandboxOf(file.get(), arguments);
    entry.shown = isShown(file.get());
    entry.inTerminal = isTrue(file.get(), G_KEY_FILE_DESKTOP_KEY_TERMINAL);
    readWebApplication(entry, arguments);
    return entry;
}

} // namespace mirrolet::platform::desktop
