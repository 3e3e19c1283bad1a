#pragma once

#include "platform/swiftui/ObservedObject.h"
#include "platform/swiftui/State.h"
#include "platform/swiftui/View.h"
#include "settings/SettingsStore.h"

#include <optional>
#include <string>

namespace mirrolet {

/// The content of the General tab of the settings window.
class GeneralSettingsView {
  public:
    /// Reads once whether the program is a login item.
    GeneralSettingsView();
    [[nodiscard]] platform::swiftui::View body() const;

  private:
    [[nodiscard]] platform::swiftui::View launchSection() const;
    [[nodiscard]] platform::swiftui::View timingSection() const;
    void applyLaunchAtLogin() const;

    platform::swiftui::ObservedObject<SettingsStore> store{SettingsStore::shared()};
    platform::swiftui::State<bool> launchAtLogin;
    platform::swiftui::State<std::optional<std::string>> launchAtLoginError{std::nullopt};
};

} // namespace mirrolet
