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

/// The content of the PiP tab of the settings window, with the list of applications to watch.
class PiPSettingsView {
  public:
    [[nodiscard]] platform::swiftui::View body() const;

    /// Returns the applications whose name contains the text, ignoring case, in the given order. An empty
    /// text returns all applications. Spaces at the ends of the text are not removed.
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

    /// The applications that one scan has found. The results of two scans are compared by pointer. Comparing
    /// the vectors would miss a changed name, because it would compare only the identifiers.
    using Apps = std::shared_ptr<const std::vector<InstalledApp>>;

    platform::swiftui::ObservedObject<SettingsStore> store{SettingsStore::shared()};
    platform::swiftui::State<Apps> installedApps{std::make_shared<const std::vector<InstalledApp>>()};
    platform::swiftui::State<bool> isLoadingApps{false};
    platform::swiftui::State<std::string> searchText{""};
};

} // namespace mirrolet
