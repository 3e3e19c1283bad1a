#pragma once

#include "platform/foundation/URL.h"

#include <optional>
#include <vector>

namespace mirrolet::platform {

/// The folders of the machine, as far as the system looks into them. Any thread.
class FileManager {
  public:
    static FileManager& standard();

    /// The home folder, by HOME, else as the account has it.
    [[nodiscard]] URL homeDirectoryForCurrentUser() const;
    /// What an application folder holds (see ApplicationFolders), hidden files left out. None for any other
    /// folder, and for one that cannot be read.
    [[nodiscard]] std::optional<std::vector<URL>> contentsOfDirectory(const URL& folder) const;
};

} // namespace mirrolet::platform
