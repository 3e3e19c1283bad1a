#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mirrolet::platform {

/// A desktop entry on disk, not read yet.
struct DesktopEntryFile {
    std::string id;   ///< File ID without ".desktop": the path below the root, its slashes as dashes.
    std::string path; ///< Of the file.
    std::size_t root; ///< Index of the folder below which the file was found.
};

/// The `applications` folders of this user in order of precedence, as the environment has them now:
/// XDG_DATA_HOME, then XDG_DATA_DIRS.
std::vector<std::string> userApplicationFolders();

/// All files with the name of an entry below the folders, at any depth, sorted within a folder. Of two with
/// the same file ID the one below the earlier folder counts, whatever its content. The time is bounded, also
/// with symbolic links that make a folder its own child. `entering` is called with every folder before the
/// folder is read, also with folders that do not exist.
std::vector<DesktopEntryFile>
desktopEntryFiles(const std::vector<std::string>& folders,
                  const std::function<void(const std::string& folder)>& entering = nullptr);

/// The content of an entry's file. None for anything but a regular file of at most 1 MiB, because GIO's own
/// reading by path would wait for ever on a FIFO and read a file of any size.
std::optional<std::string> readDesktopEntry(const std::string& path);

/// The file ID of an entry by its path, in an `applications` folder or any other.
std::string desktopEntryId(const std::string& path);

/// The file that desktopEntryFiles() gives for one ID. None if there is none.
std::optional<DesktopEntryFile> desktopEntryFile(const std::vector<std::string>& folders,
                                                 const std::string& id);

} // namespace mirrolet::platform
