#include "platform/desktop/applications/DesktopEntryIndex.h"

#include "platform/foundation/DesktopEntryFiles.h"

#include <algorithm>
#include <sys/stat.h>

namespace mirrolet::platform::desktop {

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
    // The time is noted before the folder is read, so that the next refresh() sees a change that happens
    // during the reading.
    std::vector<Stamp> noted;
    const auto files = desktopEntryFiles(folders, [&noted](const std::string& folder) {
        noted.push_back({folder, modificationTime(folder)});
    });
    for (const auto& file : files)
        if (const auto content = readDesktopEntry(file.path))
            if (auto entry = parseDesktopEntry(*content, file.id, file.path))
                fresh->add(std::move(*entry));
    stamps = std::move(noted);
    current = std::move(fresh);
    return true;
}

const DesktopEntries& DesktopEntryIndex::entries() {
    if (!current)
        refresh();
    return *current;
}

} // namespace mirrolet::platform::desktop
