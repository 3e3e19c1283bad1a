#pragma once

#include "platform/appkit/NSImage.h"
#include "platform/foundation/URL.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace mirrolet {

/// An application that is installed on this machine. Two applications are equal if their identifiers are
/// equal, whatever their names and icons.
struct InstalledApp {
    std::string bundleIdentifier;
    std::string displayName; ///< Shown in the list; the list is sorted by it.
    std::shared_ptr<platform::NSImage> icon;

    [[nodiscard]] const std::string& id() const { return bundleIdentifier; }

    /// Returns every application except this one, sorted by name. Each call reads the disk and blocks
    /// meanwhile. Never fails. Any thread.
    static std::vector<InstalledApp> scanInstalledApplications();

    friend bool operator==(const InstalledApp& first, const InstalledApp& second) {
        return first.bundleIdentifier == second.bundleIdentifier;
    }
};

/// Returns the folders that are scanned, in order. If two folders have the same application, the later folder
/// counts.
std::vector<platform::URL> applicationSearchDirectories();

} // namespace mirrolet

template <> struct std::hash<mirrolet::InstalledApp> {
    std::size_t operator()(const mirrolet::InstalledApp& app) const noexcept {
        return std::hash<std::string>{}(app.bundleIdentifier);
    }
};
