#pragma once

#include "platform/foundation/DesktopEntryFiles.h"
#include "platform/foundation/URL.h"

#include <optional>
#include <string>
#include <vector>

namespace mirrolet::platform {

/// Where applications are, under the names that the application rooms use: each is a flat folder of `ID.app`,
/// one for each file ID of the desktop entries that belong there. Which real folder belongs where:
/// - "/Applications": those of XDG_DATA_DIRS but the system's own;
/// - "/System/Applications": the one of /usr/share; its "Utilities" is empty;
/// - "Applications" in the home folder: the one of XDG_DATA_HOME.
/// Of one ID in several real folders only the first on the path is listed, in the folder that it belongs to.
class ApplicationFolders {
  public:
    /// As the environment has it now.
    ApplicationFolders();

    /// What a folder holds; none if this is not an application folder. Any thread; reads the disk.
    [[nodiscard]] std::optional<std::vector<URL>> contents(const URL& folder) const;
    /// The desktop entry behind an application; none if it is not listed. Any thread; reads the disk.
    [[nodiscard]] std::optional<DesktopEntryFile> entryOf(const URL& application) const;

  private:
    enum class Kind { local, system, utilities, home };

    [[nodiscard]] std::optional<Kind> kindOf(const URL& folder) const;
    [[nodiscard]] Kind kindOfRoot(std::size_t root) const;

    std::vector<std::string> roots;
};

} // namespace mirrolet::platform
