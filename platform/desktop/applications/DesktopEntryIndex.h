#pragma once

#include "platform/desktop/applications/DesktopEntries.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop {

/// Keeps the desktop entries of a list of folders. The entries are read on first use, and again only after
/// one of the folders has changed. Not thread-safe.
class DesktopEntryIndex {
  public:
    /// The folders are in order of precedence. Of two entries with the same file ID the first one counts,
    /// even if that entry is marked as hidden.
    explicit DesktopEntryIndex(std::vector<std::string> folders) : folders(std::move(folders)) {}

    /// Returns the entries that were read last. Reads the entries if that has not been done yet.
    const DesktopEntries& entries();
    /// Reads the entries again if one of the folders has changed. Returns true if the entries were read.
    /// Pointers to the old entries are then invalid.
    bool refresh();

  private:
    struct Stamp {
        std::string folder;
        std::int64_t modified; ///< Nanoseconds since the epoch; -1 for a folder that does not exist.
        friend bool operator==(const Stamp&, const Stamp&) = default;
    };
    [[nodiscard]] bool changed() const;
    static std::int64_t modificationTime(const std::string& folder);

    std::vector<std::string> folders;
    std::vector<Stamp> stamps; ///< One for each of the folders and of the folders inside them.
    std::unique_ptr<DesktopEntries> current;
};

} // namespace mirrolet::platform::desktop
