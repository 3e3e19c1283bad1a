#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mirrolet::platform {

/// A desktop entry on disk, not read yet.
struct DesktopEntryFile {
    std::string id;   ///< File ID without ".desktop": the path below the root, with dashes for slashes.
    std::string path; ///< Path of the file.
    std::size_t root; ///< Index of the folder below which the file was found.
};

/// Returns the `applications` folders of this user in order of precedence, as the environment has them now:
/// XDG_DATA_HOME, then XDG_DATA_DIRS.
std::vector<std::string> userApplicationFolders();

/// Returns all files with the name of an entry below the folders, at any depth, sorted within a folder. If
/// two files have the same file ID, the file below the earlier folder counts, whatever its content. The time
/// is bounded, even if symbolic links make a folder its own child. Calls `entering` with every folder before
/// reading the folder, and also with folders that do not exist.
std::vector<DesktopEntryFile>
desktopEntryFiles(const std::vector<std::string>& folders,
                  const std::function<void(const std::string& folder)>& entering = nullptr);

/// Returns the content of an entry's file. None for anything but a regular file of at most 1 MiB. GIO's own
/// reading by path is not used, because it would wait for ever on a FIFO and read a file of any size.
std::optional<std::string> readDesktopEntry(const std::string& path);

/// Returns the file ID of an entry from its path, in an `applications` folder or any other.
std::string desktopEntryId(const std::string& path);

/// Returns the file that desktopEntryFiles() gives for one ID; none if there is no such file.
std::optional<DesktopEntryFile> desktopEntryFile(const std::vector<std::string>& folders,
                                                 const std::string& id);

} // namespace mirrolet::platform
