#pragma once

#include "platform/foundation/URL.h"

#include <optional>
#include <vector>

namespace mirrolet::platform {

/// The folders of the machine, as far as Mirrolet looks into them. Any thread.
class FileManager {
  public:
    static FileManager& standard();

    /// The home folder that HOME names, else the account's.
    [[nodiscard]] URL homeDirectoryForCurrentUser() const;
    /// The content of an application folder (see ApplicationFolders) without hidden files. None for any other
    /// folder, and for a folder that cannot be read.
    [[nodiscard]] std::optional<std::vector<URL>> contentsOfDirectory(const URL& folder) const;
};

} // namespace mirrolet::platform
