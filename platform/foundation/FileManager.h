#pragma once

#include "platform/foundation/URL.h"

#include <optional>
#include <vector>

namespace mirrolet::platform {

/// Returns the folders that Mirrolet reads. Any thread.
class FileManager {
  public:
    static FileManager& standard();

    /// Returns the folder that HOME names. If HOME is not set, returns the home folder of the user's account.
    [[nodiscard]] URL homeDirectoryForCurrentUser() const;
    /// Returns the content of an application folder (see ApplicationFolders) without hidden files. Returns
    /// none for any other folder, and for a folder that cannot be read.
    [[nodiscard]] std::optional<std::vector<URL>> contentsOfDirectory(const URL& folder) const;
};

} // namespace mirrolet::platform
