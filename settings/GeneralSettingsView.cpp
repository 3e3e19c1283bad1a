#include "settings/GeneralSettingsView.h"

#include "platform/servicemanagement/SMAppService.h"
#include "platform/swiftui/Form.h"
#include "platform/swiftui/Picker.h"
#include "platform/swiftui/Toggle.h"

namespace mirrolet {

using namespace platform;
using namespace platform::swiftui;

namespace {

bool isLoginItem() {
    return SMAppService::mainApp().status() == SMAppService::Status::enabled;
}

} // namespace

GeneralSettingsView::GeneralSettingsView() : launchAtLogin(isLoginItem()) {}

View GeneralSettingsView::body() const {
    return Form({launchSection(), timingSection()})
        .onChange(launchAtLogin.changes(), [view = *this] { view.applyLaunchAtLogin(); })
        .alert("Launch at Login", launchAtLoginError.binding());
}

/// Makes the login item match the switch. If that fails, shows the error and sets the switch back to the real
/// state. Setting the switch calls this function once more, which is harmless.
void GeneralSettingsView::applyLaunchAtLogin() const {
    const auto error = launchAtLogin.get() ? SMAppService::mainApp().registerService()
                                           : SMAppService::mainApp().unregisterService();
    if (!error)
        return;
    launchAtLoginError.set(error->localizedDescription);
    launchAtLogin.set(isLoginItem());
}

View GeneralSettingsView::launchSection() const {
    return Section({
        Toggle("Launch at login", launchAtLogin.binding()),
        Toggle("Start monitoring when app launches",
               store.binding<bool>(&SettingsStore::startMonitoringOnLaunch,
                                   &SettingsStore::setStartMonitoringOnLaunch)),
    });
}

View GeneralSettingsView::timingSection() const {
    return Section({
        Picker<double>("Check for windows every",
                       store.binding<double>(&SettingsStore::pollInterval, &SettingsStore::setPollInterval),
                       {{"1 second", 1.0}, {"2 seconds", 2.0}, {"3 seconds", 3.0}, {"5 seconds", 5.0}}),
        Picker<double>(
            "Prompt disappears after",
            store.binding<double>(&SettingsStore::promptTimeout, &SettingsStore::setPromptTimeout),
            {{"5 seconds", 5.0}, {"10 seconds", 10.0}, {"15 seconds", 15.0}, {"30 seconds", 30.0}}),
    });
}

} // namespace mirrolet
