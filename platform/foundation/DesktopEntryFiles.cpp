#include "platform/foundation/DesktopEntryFiles.h"

#include "platform/foundation/RegularFile.h"

#include <glib.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <utility>

namespace mirrolet::platform {

namespace {

// The limits are far above what a real machine has. They keep huge folders and files from delaying the
// program for long.
constexpr std::size_t mostEntries = 20000;
constexpr std::size_t mostBytesOfEntry = 1 << 20;
constexpr int deepestFolder = 8;
constexpr std::string_view suffix = ".desktop";

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

bool isFolder(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string withoutSuffix(const std::string& name) {
    return name.ends_with(suffix) ? name.substr(0, name.size() - suffix.size()) : name;
}

bool isHidden(const std::string& name) {
    return name.starts_with('.');
}

using Entering = std::function<void(const std::string& folder)>;

/// Walks through folders and their subfolders and collects the desktop entries. Enters each folder only once,
/// even if symbolic links lead to it again.
class Walk {
  public:
    Walk(std::vector<DesktopEntryFile>& found, const Entering& entering) : found(found), entering(entering) {}

    void walk(const std::string& folder, std::size_t root, const std::string& idPrefix = {}, int depth = 0) {
        if (entering)
            entering(folder);
        if (depth > deepestFolder || !enter(folder))
            return;
        for (const auto& item : itemsIn(folder))
            take(item, root, idPrefix, depth);
    }

  private:
    bool enter(const std::string& folder) {
        struct stat status {};
        return stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
               entered.emplace(status.st_dev, status.st_ino).second;
    }

    /// Returns the items of a folder, sorted by name. The first of two entries with the same ID is used, and
    /// without sorting the file system would decide which one is first.
    static std::vector<std::filesystem::directory_entry> itemsIn(const std::string& folder) {
        std::vector<std::filesystem::directory_entry> items;
        std::error_code error;
        std::filesystem::directory_iterator item(folder, error);
        for (; !error && item != std::filesystem::directory_iterator() && items.size() < mostEntries;
             item.increment(error))
            items.push_back(*item);
        std::sort(items.begin(), items.end());
        return items;
    }

    void take(const std::filesystem::directory_entry& item, std::size_t root, const std::string& idPrefix,
              int depth) {
        const std::string name = item.path().filename().string();
        if (isHidden(name))
            return;
        if (name.ends_with(suffix))
            return takeEntry(item.path().string(), root, idPrefix + withoutSuffix(name));
        std::error_code error;
        if (item.is_directory(error))
            walk(item.path().string(), root, idPrefix + name + '-', depth + 1);
    }

    void takeEntry(std::string path, std::size_t root, std::string id) {
        if (ids.size() < mostEntries && ids.insert(id).second)
            found.push_back({std::move(id), std::move(path), root});
    }

    std::vector<DesktopEntryFile>& found;
    const Entering& entering;
    std::set<std::pair<dev_t, ino_t>> entered;
    std::set<std::string> ids;
};

/// Returns the path of the entry with this ID below the folder. Looks into subfolders too, because a dash in
/// an ID may stand for a slash.
std::optional<std::string> pathBelow(const std::string& folder, const std::string& id, int depth = 0) {
    const std::string here = folder + '/' + id + std::string(suffix);
    struct stat status {};
    if (!isHidden(id) && lstat(here.c_str(), &status) == 0)
        return here;
    for (auto dash = id.find('-'); dash != std::string::npos && depth < deepestFolder;
         dash = id.find('-', dash + 1)) {
        const std::string child = folder + '/' + id.substr(0, dash);
        if (dash == 0 || isHidden(id) || !isFolder(child))
            continue;
        if (auto path = pathBelow(child, id.substr(dash + 1), depth + 1))
            return path;
    }
    return std::nullopt;
}

} // namespace

std::vector<std::string> userApplicationFolders() {
    const std::string own = environment("XDG_DATA_HOME");
    const std::string system = environment("XDG_DATA_DIRS");
    // Relative paths are ignored, because they are not valid in XDG_DATA_HOME and XDG_DATA_DIRS.
    std::string list = (own.starts_with('/') ? own : std::string(g_get_home_dir()) + "/.local/share") + ':' +
                       (system.empty() ? "/usr/local/share:/usr/share" : system) + ':';
    std::vector<std::string> folders;
    for (std::size_t start = 0, end = list.find(':'); end != std::string::npos;
         start = end + 1, end = list.find(':', start)) {
        std::string folder = list.substr(start, end - start);
        while (folder.ends_with('/'))
            folder.pop_back();
        if (folder.starts_with('/'))
            folders.push_back(folder + "/applications");
    }
    return folders;
}

std::vector<DesktopEntryFile> desktopEntryFiles(const std::vector<std::string>& folders,
                                                const Entering& entering) {
    std::vector<DesktopEntryFile> found;
    Walk walk(found, entering);
    for (std::size_t root = 0; root < folders.size(); ++root)
        walk.walk(folders[root], root);
    return found;
}

std::optional<std::string> readDesktopEntry(const std::string& path) {
    return readRegularFile(path, mostBytesOfEntry);
}

std::string desktopEntryId(const std::string& path) {
    constexpr std::string_view folder = "/applications/";
    const auto at = path.rfind(folder);
    std::string id = path.substr(at == std::string::npos ? path.rfind('/') + 1 : at + folder.size());
    std::replace(id.begin(), id.end(), '/', '-');
    return withoutSuffix(id);
}

std::optional<DesktopEntryFile> desktopEntryFile(const std::vector<std::string>& folders,
                                                 const std::string& id) {
    if (id.empty() || id.find('/') != std::string::npos)
        return std::nullopt;
    for (std::size_t root = 0; root < folders.size(); ++root)
        if (auto path = pathBelow(folders[root], id))
            return DesktopEntryFile{id, std::move(*path), root};
    return std::nullopt;
}

} // namespace mirrolet::platform
