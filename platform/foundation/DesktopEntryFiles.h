#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mirrolet::platform {

/// Tells where a desktop entry is on the disk.
struct DesktopEntryFile {
    /// The file ID: the path below the searched folder without ".desktop", with dashes for slashes.
    std::string id;
    std::string path; ///< The path of the file.
    std::size_t root; ///< The index of the searched folder that the file is below.
};

/// Returns the `applications` folders of this user in order of precedence, as the environment has them now:
/// XDG_DATA_HOME, then XDG_DATA_DIRS.
std::vector<std::string> userApplicationFolders();

/// Returns all files below the folders whose name ends in ".desktop", at any depth, sorted within a folder.
/// If two files have the same file ID, returns only the file below the earlier folder, even if that file is
/// broken. The time is bounded, even if symbolic links make a folder its own child. Calls `entering` with the
/// path of every folder just before reading that folder, even if the folder does not exist.
std::vector<DesktopEntryFile>
desktopEntryFiles(const std::vector<std::string>& folders,
                  const std::function<void(const std::string& folder)>& entering = nullptr);

/// Returns the content of a desktop entry. Returns none if the path is not a regular file of at most 1 MiB.
/// GIO's own function for this is not used, because it would wait for ever on a FIFO and would read a file of
/// any size.
std::optional<std::string> readDesktopEntry(const std::string& path);

/// Returns the file ID of a desktop entry from its path. The file may be in an `applications` folder or in
/// any other folder.
std::string desktopEntryId(const std::string& path);

/// Returns the one file that desktopEntryFiles() would return for this ID, or none if there is no such file.
std::optional<DesktopEntryFile> desktopEntryFile(const std::vector<std::string>& folders,
                                                 const std::string& id);

} // namespace mirrolet::platform
