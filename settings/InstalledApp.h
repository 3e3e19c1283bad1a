#pragma once

#include "platform/appkit/NSImage.h"
#include "platform/foundation/URL.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace mirrolet {

/// An application that is installed on this machine. Two are the same if their identifiers are, whatever
/// their names and icons.
struct InstalledApp {
    std::string bundleIdentifier;
    std::string displayName; ///< Shown in the list, and what it is sorted by.
    std::shared_ptr<platform::NSImage> icon;

    [[nodiscard]] const std::string& id() const { return bundleIdentifier; }

    /// Every application but this one, sorted by name. Reads the disk afresh each time, and blocks for as
    /// long as that takes. Never fails; any thread.
    static std::vector<InstalledApp> scanInstalledApplications();

    friend bool operator==(const InstalledApp& first, const InstalledApp& second) {
        return first.bundleIdentifier == second.bundleIdentifier;
    }
};

/// The folders that are scanned, in order; of one application in two of them, the later counts.
std::vector<platform::URL> applicationSearchDirectories();

} // namespace mirrolet

template <> struct std::hash<mirrolet::InstalledApp> {
    std::size_t operator()(const mirrolet::InstalledApp& app) const noexcept {
        return std::hash<std::string>{}(app.bundleIdentifier);
    }
};
