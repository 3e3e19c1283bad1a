#include "platform/foundation/FileManager.h"

#include "platform/foundation/ApplicationFolders.h"

#include <glib.h>

namespace mirrolet::platform {

FileManager& FileManager::standard() {
    static FileManager manager;
    return manager;
}

URL FileManager::homeDirectoryForCurrentUser() const {
    return URL::fileURLWithPath(g_get_home_dir());
}

std::optional<std::vector<URL>> FileManager::contentsOfDirectory(const URL& folder) const {
    return ApplicationFolders().contents(folder);
}

} // namespace mirrolet::platform
