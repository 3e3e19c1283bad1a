#pragma once

#include "platform/foundation/URL.h"

#include <optional>
#include <vector>

namespace mirrolet::platform {

/// Gives the folders of the machine that Mirrolet reads. Any thread.
class FileManager {
  public:
    static FileManager& standard();

    /// Returns the home folder that HOME names, or else the home folder of the account.
    [[nodiscard]] URL homeDirectoryForCurrentUser() const;
    /// Returns the content of an application folder (see ApplicationFolders) without hidden files. None for
    /// any other folder, and for a folder that cannot be read.
    [[nodiscard]] std::optional<std::vector<URL>> contentsOfDirectory(const URL& folder) const;
};

} // namespace mirrolet::platform
