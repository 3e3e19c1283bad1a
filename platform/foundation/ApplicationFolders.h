#pragma once

#include "platform/foundation/DesktopEntryFiles.h"
#include "platform/foundation/URL.h"

#include <optional>
#include <string>
#include <vector>

namespace mirrolet::platform {

/// Translates the folder names that the application rooms use into the real folders of desktop entries. An
/// entry with the file ID `ID` appears as `ID.app` directly in one of these folders:
/// - "/Applications" has the entries of XDG_DATA_DIRS, except those of /usr/share;
/// - "/System/Applications" has the entries of /usr/share;
/// - "/System/Applications/Utilities" is always empty;
/// - "Applications" in the home folder has the entries of XDG_DATA_HOME.
/// If several real folders have an entry with the same ID, only one of these entries is listed: the entry in
/// XDG_DATA_HOME if there is one, otherwise the entry in the first folder of XDG_DATA_DIRS that has one.
class ApplicationFolders {
  public:
    /// Reads the environment variables. Later changes of the variables have no effect.
    ApplicationFolders();

    /// Returns the content of a folder. Returns none if the folder is not one of those above. Any thread;
    /// reads the disk.
    [[nodiscard]] std::optional<std::vector<URL>> contents(const URL& folder) const;
    /// Returns the desktop entry of an application. Returns none if the application is not listed. Any
    /// thread; reads the disk.
    [[nodiscard]] std::optional<DesktopEntryFile> entryOf(const URL& application) const;

  private:
    enum class Kind { local, system, utilities, home };

    [[nodiscard]] std::optional<Kind> kindOf(const URL& folder) const;
    [[nodiscard]] Kind kindOfRoot(std::size_t root) const;

    std::vector<std::string> roots;
};

} // namespace mirrolet::platform
