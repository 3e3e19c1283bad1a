#pragma once

#include "platform/swiftui/ObservedObject.h"
#include "platform/swiftui/State.h"
#include "platform/swiftui/View.h"
#include "settings/InstalledApp.h"
#include "settings/SettingsStore.h"

#include <memory>
#include <string>
#include <vector>

namespace mirrolet {

/// Content of the PiP tab: settings of the mirror and of the watched applications.
class PiPSettingsView {
  public:
    [[nodiscard]] platform::swiftui::View body() const;

    /// Returns the applications whose name contains the text, ignoring case, in the given order. An empty
    /// text returns all of them. The text is not trimmed.
    static std::vector<InstalledApp> filtered(const std::vector<InstalledApp>& apps,
                                              const std::string& searchText);

  private:
    [[nodiscard]] platform::swiftui::View mirrorSection() const;
    [[nodiscard]] platform::swiftui::View modeSection() const;
    [[nodiscard]] platform::swiftui::View watchedSection(MonitoringScope scope) const;
    [[nodiscard]] platform::swiftui::View appsOrProgress() const;
    [[nodiscard]] platform::swiftui::View appList() const;
    void loadInstalledApps() const;
    void setWatched(const std::string& identifier, bool isWatched) const;

    /// The result of one scan. Results are compared by identity, because a later scan may have other names
    /// under the same identifiers.
    using Apps = std::shared_ptr<const std::vector<InstalledApp>>;

    platform::swiftui::ObservedObject<SettingsStore> store{SettingsStore::shared()};
    platform::swiftui::State<Apps> installedApps{std::make_shared<const std::vector<InstalledApp>>()};
    platform::swiftui::State<bool> isLoadingApps{false};
    platform::swiftui::State<std::string> searchText{""};
};

} // namespace mirrolet
