#include "platform/desktop/x11/DesktopEntryIndex.h"

#include "platform/desktop/x11/RegularFile.h"

#include <glib.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <set>
#include <string_view>
#include <sys/stat.h>
#include <system_error>

namespace mirrolet::platform::desktop::x11 {

namespace {

// Far above what is found in practice, and low enough that a folder gone wild neither stops nor delays a poll
// for long.
constexpr std::size_t mostBytesOfEntry = 1 << 20;
constexpr std::size_t mostEntries = 20000;
constexpr int deepestFolder = 8;
constexpr std::string_view suffix = ".desktop";

} // namespace

/// One pass over the folders.
class DesktopEntryIndex::Reading {
  public:
    explicit Reading(DesktopEntries& entries) : entries(entries) {}

    void readFolder(const std::string& folder, const std::string& idPrefix = {}, int depth = 0) {
        stamps.push_back({folder, modificationTime(folder)});
        if (depth > deepestFolder || !enter(folder))
            return;
        for (const auto& name : namesIn(folder))
            readItem(folder + '/' + name, idPrefix + name, depth);
    }

    std::vector<Stamp> stamps;

  private:
    /// Symbolic links can make a folder its own child; each is read once.
    bool enter(const std::string& folder) {
        struct stat status {};
        return stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
               visited.emplace(status.st_dev, status.st_ino).second;
    }

    /// Sorted, so that which of two alike is taken does not depend on the file system.
    static std::vector<std::string> namesIn(const std::string& folder) {
        std::vector<std::string> names;
        std::error_code error;
        std::filesystem::directory_iterator item(folder, error);
        for (; !error && item != std::filesystem::directory_iterator() && names.size() < mostEntries;
             item.increment(error))
            names.push_back(item->path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    void readItem(const std::string& path, const std::string& idPart, int depth) {
        if (idPart.ends_with(suffix))
            return readEntry(path, idPart.substr(0, idPart.size() - suffix.size()));
        std::error_code error;
        if (std::filesystem::is_directory(path, error))
            readFolder(path, idPart + '-', depth + 1);
    }

    void readEntry(const std::string& path, const std::string& id) {
        if (taken.size() >= mostEntries || !taken.insert(id).second)
            return;
        const auto content = readRegularFile(path, mostBytesOfEntry);
        if (!content)
            return;
        if (auto entry = parseDesktopEntry(*content, id, path))
            entries.add(std::move(*entry));
    }

    DesktopEntries& entries;
    std::set<std::pair<dev_t, ino_t>> visited;
    std::set<std::string> taken;
};

std::vector<std::string> DesktopEntryIndex::userFolders() {
    std::vector<std::string> folders = {g_get_user_data_dir()};
    for (const auto* const* folder = g_get_system_data_dirs(); *folder; ++folder)
        folders.emplace_back(*folder);
    for (auto& folder : folders)
        folder += "/applications";
    return folders;
}

std::int64_t DesktopEntryIndex::modificationTime(const std::string& folder) {
    struct stat status {};
    if (stat(folder.c_str(), &status) != 0)
        return -1;
    return std::int64_t{status.st_mtim.tv_sec} * 1000000000 + status.st_mtim.tv_nsec;
}

bool DesktopEntryIndex::changed() const {
    return std::any_of(stamps.begin(), stamps.end(),
                       [](const Stamp& stamp) { return modificationTime(stamp.folder) != stamp.modified; });
}

bool DesktopEntryIndex::refresh() {
    if (current && !changed())
        return false;
    auto fresh = std::make_unique<DesktopEntries>();
    Reading reading(*fresh);
    for (const auto& folder : folders)
        reading.readFolder(folder);
    stamps = std::move(reading.stamps);
    current = std::move(fresh);
    return true;
}

const DesktopEntries& DesktopEntryIndex::entries() {
    if (!current)
        refresh();
    return *current;
}

} // namespace mirrolet::platform::desktop::x11
