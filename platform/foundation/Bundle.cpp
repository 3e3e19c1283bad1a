#include "platform/foundation/Bundle.h"

#include "platform/foundation/ApplicationFolders.h"
#include "platform/foundation/DesktopEntryFiles.h"
#include "platform/foundation/GLibPointer.h"

namespace mirrolet::platform {

namespace {

GLibPointer<GDesktopAppInfo> readEntry(const std::string& path) {
    const auto content = readDesktopEntry(path);
    const GLibPointer<GKeyFile> keys(g_key_file_new());
    if (!content || content->empty() ||
        !g_key_file_load_from_data(keys.get(), content->data(), content->size(), G_KEY_FILE_NONE, nullptr))
        return nullptr;
    // The result is nullptr if the entry is not an application, or if its program is not installed.
    return GLibPointer<GDesktopAppInfo>(g_desktop_app_info_new_from_keyfile(keys.get()));
}

bool isInMenus(GDesktopAppInfo* info) {
    return !g_desktop_app_info_get_is_hidden(info) && g_app_info_should_show(G_APP_INFO(info));
}

} // namespace

const Bundle& Bundle::main() {
    static const Bundle own = [] {
        Bundle bundle;
        bundle.identifier = "app.mirrolet.Mirrolet";
        bundle.name = "Mirrolet";
        bundle.iconName = "app.mirrolet.Mirrolet";
        return bundle;
    }();
    return own;
}

std::optional<Bundle> Bundle::open(const URL& application) {
    const auto file = ApplicationFolders().entryOf(application);
    if (!file)
        return std::nullopt;
    const auto info = readEntry(file->path);
    if (!info || !isInMenus(info.get()))
        return std::nullopt;
    Bundle bundle;
    bundle.identifier = file->id;
    if (g_desktop_app_info_has_key(info.get(), G_KEY_FILE_DESKTOP_KEY_NAME))
        bundle.name = g_app_info_get_name(G_APP_INFO(info.get()));
    const GLibPointer<char> icon(
        g_desktop_app_info_get_locale_string(info.get(), G_KEY_FILE_DESKTOP_KEY_ICON));
    bundle.iconName = icon ? icon.get() : "";
    return bundle;
}

PropertyList Bundle::object(const std::string& forInfoDictionaryKey) const {
    const bool asksName =
        forInfoDictionaryKey == "CFBundleDisplayName" || forInfoDictionaryKey == "CFBundleName";
    return asksName && name ? PropertyList(*name) : PropertyList();
}

} // namespace mirrolet::platform
