#pragma once

#include "platform/appkit/NSImage.h"
#include "platform/foundation/URL.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace mirrolet {

/// An application that is installed on this machine. Comparing two applications compares only their
/// identifiers.
struct InstalledApp {
    std::string bundleIdentifier;
    std::string displayName; ///< The settings window shows this name and sorts the list by it.
    std::shared_ptr<platform::NSImage> icon;

    [[nodiscard]] const std::string& id() const { return bundleIdentifier; }

    /// Returns every installed application except Mirrolet, sorted by name. Skips applications that cannot be
    /// read. Blocks while reading the disk. Any thread.
    static std::vector<InstalledApp> scanInstalledApplications();

    friend bool operator==(const InstalledApp& first, const InstalledApp& second) {
        return first.bundleIdentifier == second.bundleIdentifier;
    }
};

/// Returns the folders in the order in which scanInstalledApplications() reads them. If two folders contained
/// the same identifier, the application in the later folder would be used. ApplicationFolders avoids this by
/// listing each application in only one folder.
std::vector<platform::URL> applicationSearchDirectories();

} // namespace mirrolet

template <> struct std::hash<mirrolet::InstalledApp> {
    std::size_t operator()(const mirrolet::InstalledApp& app) const noexcept {
        return std::hash<std::string>{}(app.bundleIdentifier);
    }
};
