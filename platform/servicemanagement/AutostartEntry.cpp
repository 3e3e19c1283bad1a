#include "platform/servicemanagement/AutostartEntry.h"

#include "platform/foundation/ConfigFolder.h"
#include "platform/foundation/GLibPointer.h"
#include "platform/foundation/RegularFile.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace mirrolet::platform {

namespace {

constexpr auto fileName = "/autostart/app.mirrolet.Mirrolet.desktop";
constexpr auto* group = G_KEY_FILE_DESKTOP_GROUP;
constexpr auto enabledKey = "X-GNOME-Autostart-enabled";
constexpr std::size_t mostBytes = 1 << 20;

std::string environment(const char* name, const std::string& otherwise) {
    const char* value = std::getenv(name);
    return value && *value ? value : otherwise;
}

/// Reads a desktop entry. Returns nullptr if there is no such file, or if the file is not a desktop entry.
GLibPointer<GKeyFile> readKeys(const std::string& path) {
    const auto content = readRegularFile(path, mostBytes);
    GLibPointer<GKeyFile> keys(g_key_file_new());
    constexpr auto keepAll =
        static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
    if (!content || content->empty() ||
        !g_key_file_load_from_data(keys.get(), content->data(), content->size(), keepAll, nullptr))
        return nullptr;
    return keys;
}

bool isSwitchedOff(GKeyFile* keys) {
    return g_key_file_get_boolean(keys, group, G_KEY_FILE_DESKTOP_KEY_HIDDEN, nullptr) ||
           (g_key_file_has_key(keys, group, enabledKey, nullptr) &&
            !g_key_file_get_boolean(keys, group, enabledKey, nullptr));
}

NSError failure(const std::string& path, const std::string& reason) {
    return {"The login item “" + path + "” cannot be changed. " + reason};
}

std::optional<NSError> replaceFile(const std::string& path, GKeyFile* keys) {
    const std::string folder = path.substr(0, path.rfind('/'));
    if (g_mkdir_with_parents(folder.c_str(), S_IRWXU) != 0)
        return failure(path, g_strerror(errno));
    gsize length = 0;
    const GLibPointer<char> content(g_key_file_to_data(keys, &length, nullptr));
    constexpr auto whole =
        static_cast<GFileSetContentsFlags>(G_FILE_SET_CONTENTS_CONSISTENT | G_FILE_SET_CONTENTS_DURABLE);
    GError* failed = nullptr;
    if (g_file_set_contents_full(path.c_str(), content.get(), static_cast<gssize>(length), whole, 0644,
                                 &failed))
        return std::nullopt;
    const GLibPointer<GError> error(failed);
    return failure(path, error->message);
}

} // namespace

AutostartEntry AutostartEntry::own() {
    return AutostartEntry(userConfigFolder() + fileName);
}

std::optional<AutostartEntry> AutostartEntry::systemWide() {
    const GLibPointer<char*> folders(g_strsplit(environment("XDG_CONFIG_DIRS", "/etc/xdg").c_str(), ":", -1));
    for (char** folder = folders.get(); *folder; ++folder)
        if (AutostartEntry entry(std::string(*folder) + fileName); **folder == '/' && entry.exists())
            return entry;
    return std::nullopt;
}

bool AutostartEntry::exists() const {
    struct stat status {};
    return stat(path.c_str(), &status) == 0;
}

bool AutostartEntry::isOn() const {
    const auto keys = readKeys(path);
    if (!keys || isSwitchedOff(keys.get()))
        return false;
    // GIO returns nullptr for an entry that is not an application, or whose program is not installed.
    const GLibPointer<GDesktopAppInfo> info(g_desktop_app_info_new_from_keyfile(keys.get()));
    return info && g_app_info_get_executable(G_APP_INFO(info.get())) &&
           g_desktop_app_info_get_show_in(info.get(), nullptr);
}

std::string AutostartEntry::quoted(const std::string& program) {
    std::string exec = "\"";
    for (const char letter : program) {
        if (std::string_view("\"`$\\").find(letter) != std::string_view::npos)
            exec += '\\';
        exec += letter;
        if (letter == '%')
            exec += '%';
    }
    return exec + '"';
}

std::optional<NSError> AutostartEntry::write(const std::string& program, bool on,
                                             const std::optional<AutostartEntry>& base) const {
    auto keys = readKeys(path);
    if (!keys && base)
        keys = readKeys(base->path);
    if (!keys)
        keys.reset(g_key_file_new());
    auto* file = keys.get();
    g_key_file_set_string(file, group, G_KEY_FILE_DESKTOP_KEY_TYPE, G_KEY_FILE_DESKTOP_TYPE_APPLICATION);
    if (!g_key_file_has_key(file, group, G_KEY_FILE_DESKTOP_KEY_NAME, nullptr))
        g_key_file_set_string(file, group, G_KEY_FILE_DESKTOP_KEY_NAME, "Mirrolet");
    g_key_file_set_string(file, group, G_KEY_FILE_DESKTOP_KEY_EXEC, quoted(program).c_str());
    // With the key TryExec, a desktop ignores the entry once the program is no longer installed.
    g_key_file_set_string(file, group, G_KEY_FILE_DESKTOP_KEY_TRY_EXEC, program.c_str());
    g_key_file_set_boolean(file, group, G_KEY_FILE_DESKTOP_KEY_HIDDEN, !on);
    g_key_file_set_boolean(file, group, enabledKey, on);
    for (const auto* limit : {G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN, G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN})
        if (on)
            g_key_file_remove_key(file, group, limit, nullptr);
    return replaceFile(path, file);
}

std::optional<NSError> AutostartEntry::remove() const {
    if (unlink(path.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR)
        return std::nullopt;
    return failure(path, g_strerror(errno));
}

} // namespace mirrolet::platform
