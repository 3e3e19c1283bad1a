#include "settings/InstalledApp.h"

#include "platform/appkit/NSWorkspace.h"
#include "platform/foundation/Bundle.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/LocalizedComparison.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>

namespace mirrolet {

using platform::Bundle;
using platform::FileManager;
using platform::NSWorkspace;
using platform::URL;

namespace {

using AppsByIdentifier = std::unordered_map<std::string, InstalledApp>;

std::string displayNameOf(const Bundle& bundle, const URL& entry) {
    for (const auto* key : {"CFBundleDisplayName", "CFBundleName"}) {
        const auto value = bundle.object(key);
        if (const auto* name = value.asString())
            return *name;
    }
    return entry.deletingPathExtension().lastPathComponent();
}

std::optional<InstalledApp> appAt(const URL& entry, const std::optional<std::string>& ownIdentifier) {
    if (entry.pathExtension() != "app")
        return std::nullopt;
    const auto bundle = Bundle::open(entry);
    if (!bundle || !bundle->bundleIdentifier() || bundle->bundleIdentifier() == ownIdentifier)
        return std::nullopt;
    return InstalledApp{*bundle->bundleIdentifier(), displayNameOf(*bundle, entry),
                        NSWorkspace::shared().iconForFile(entry.path())};
}

void scan(const URL& folder, AppsByIdentifier& apps) {
    const auto& ownIdentifier = Bundle::main().bundleIdentifier();
    const auto entries = FileManager::standard().contentsOfDirectory(folder);
    if (!entries)
        return;
    for (const auto& entry : *entries)
        if (auto app = appAt(entry, ownIdentifier)) {
            const auto identifier = app->bundleIdentifier;
            apps.insert_or_assign(identifier, std::move(*app));
        }
}

} // namespace

std::vector<URL> applicationSearchDirectories() {
    const URL home = FileManager::standard().homeDirectoryForCurrentUser();
    return {URL::fileURLWithPath("/Applications"), URL::fileURLWithPath("/System/Applications"),
            URL::fileURLWithPath("/System/Applications/Utilities"),
            home.appendingPathComponent("Applications")};
}

std::vector<InstalledApp> InstalledApp::scanInstalledApplications() {
    AppsByIdentifier byIdentifier;
    for (const auto& folder : applicationSearchDirectories())
        scan(folder, byIdentifier);
    std::vector<InstalledApp> apps;
    apps.reserve(byIdentifier.size());
    for (auto& [identifier, app] : byIdentifier)
        apps.push_back(std::move(app));
    std::sort(apps.begin(), apps.end(), [](const InstalledApp& first, const InstalledApp& second) {
        return platform::localizedCaseInsensitiveCompare(first.displayName, second.displayName) ==
               platform::ComparisonResult::orderedAscending;
    });
    return apps;
}

} // namespace mirrolet
