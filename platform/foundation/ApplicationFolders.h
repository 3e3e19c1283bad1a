#pragma once

#include "platform/foundation/DesktopEntryFiles.h"
#include "platform/foundation/URL.h"

#include <optional>
#include <string>
#include <vector>

namespace mirrolet::platform {

/// The folders of applications, under the names that the application rooms use. Each is a flat folder of
/// `ID.app`, one for each desktop entry with the file ID `ID`. The real folders behind each name:
/// - "/Applications": the folders of XDG_DATA_DIRS except the system's own;
/// - "/System/Applications": the folder of /usr/share; its "Utilities" is empty;
/// - "Applications" in the home folder: the folder of XDG_DATA_HOME.
/// If several real folders hold an entry of the same ID, only the first on the path is listed.
class ApplicationFolders {
  public:
    /// Reads the real folders from the environment as it is now.
    ApplicationFolders();

    /// Returns the content of a folder; none if the folder is not an application folder. Any thread; reads
    /// the disk.
    [[nodiscard]] std::optional<std::vector<URL>> contents(const URL& folder) const;
    /// Returns the desktop entry behind an application; none if the application is not listed. Any thread;
    /// reads the disk.
    [[nodiscard]] std::optional<DesktopEntryFile> entryOf(const URL& application) const;

  private:
    enum class Kind { local, system, utilities, home };

    [[nodiscard]] std::optional<Kind> kindOf(const URL& folder) const;
    [[nodiscard]] Kind kindOfRoot(std::size_t root) const;

    std::vector<std::string> roots;
};

} // namespace mirrolet::platform
