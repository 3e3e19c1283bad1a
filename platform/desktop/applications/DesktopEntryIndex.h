#pragma once

#include "platform/desktop/applications/DesktopEntries.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop {

/// Keeps the desktop entries of a list of folders. Read on first use; read again only when one of the folders
/// was changed. Not thread-safe: its owner locks.
class DesktopEntryIndex {
  public:
    /// Folders in order of precedence: of two entries with the same file ID the first counts, even if it only
    /// says that it is hidden.
    explicit DesktopEntryIndex(std::vector<std::string> folders) : folders(std::move(folders)) {}

    /// The entries as of the last look at the folders.
    const DesktopEntries& entries();
    /// Looks at the folders. True if the entries were read anew: pointers to the old ones are dead.
    bool refresh();

  private:
    struct Stamp {
        std::string folder;
        std::int64_t modified; ///< Nanoseconds; -1 for a folder that is not there.
        friend bool operator==(const Stamp&, const Stamp&) = default;
    };
    [[nodiscard]] bool changed() const;
    static std::int64_t modificationTime(const std::string& folder);

    std::vector<std::string> folders;
    std::vector<Stamp> stamps; ///< Of the folders and all folders in them.
    std::unique_ptr<DesktopEntries> current;
};

} // namespace mirrolet::platform::desktop
