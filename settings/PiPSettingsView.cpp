#include "settings/PiPSettingsView.h"

#include "platform/dispatch/DispatchQueue.h"
#include "platform/foundation/LocalizedContains.h"
#include "platform/swiftui/Form.h"
#include "platform/swiftui/List.h"
#include "platform/swiftui/Picker.h"
#include "platform/swiftui/ProgressView.h"
#include "platform/swiftui/Stacks.h"
#include "platform/swiftui/Switching.h"
#include "platform/swiftui/Text.h"
#include "platform/swiftui/TextField.h"
#include "platform/swiftui/Toggle.h"
#include "settings/ShortcutRecorderView.h"

#include <algorithm>
#include <iterator>

namespace mirrolet {

using namespace platform;
using namespace platform::swiftui;

namespace {

std::string label(PiPCorner corner) {
    switch (corner) {
    case PiPCorner::bottomRight:
        return "Bottom Right";
    case PiPCorner::bottomLeft:
        return "Bottom Left";
    case PiPCorner::topRight:
        return "Top Right";
    case PiPCorner::topLeft:
        break;
    }
    return "Top Left";
}

View shortcutRow(const std::string& title, const ShortcutRecorderView& recorder) {
    return HStack(12, {Text(title), recorder.accessibilityLabel(title).frame(130, 24)});
}

std::vector<std::pair<std::string, PiPCorner>> corners() {
    std::vector<std::pair<std::string, PiPCorner>> result;
    result.reserve(std::size(allPiPCorners));
    for (const PiPCorner corner : allPiPCorners)
        result.emplace_back(label(corner), corner);
    return result;
}

} // namespace

View PiPSettingsView::body() const {
    const Switching<MonitoringScope> watched(
        store.changes(), [store = store] { return store->monitoringScope(); },
        [view = *this](MonitoringScope scope) { return view.watchedSection(scope); });
    return Form({mirrorSection(), modeSection(), watched}).task([view = *this] { view.loadInstalledApps(); });
}

View PiPSettingsView::mirrorSection() const {
    const auto number = [this](auto get, auto set) { return store.binding<std::uint32_t>(get, set); };
    return Section({
        shortcutRow("Show/hide PiP shortcut",
                    {number(&SettingsStore::shortcutKeyCode, &SettingsStore::setShortcutKeyCode),
                     number(&SettingsStore::shortcutModifiers, &SettingsStore::setShortcutModifiers)}),
        shortcutRow("Start/close PiP shortcut", {number(&SettingsStore::pipFrontmostShortcutKeyCode,
                                                        &SettingsStore::setPipFrontmostShortcutKeyCode),
                                                 number(&SettingsStore::pipFrontmostShortcutModifiers,
                                                        &SettingsStore::setPipFrontmostShortcutModifiers)}),
        Toggle("Keep PiP on top of other windows",
               store.binding<bool>(&SettingsStore::pipAlwaysOnTop, &SettingsStore::setPipAlwaysOnTop)),
        Picker<PiPCorner>("Default position",
                          store.binding<PiPCorner>(&SettingsStore::pipCorner, &SettingsStore::setPipCorner),
                          corners()),
    });
}

View PiPSettingsView::modeSection() const {
    return Section({
        Picker<MonitoringScope>("Monitoring Mode",
                                store.binding<MonitoringScope>(&SettingsStore::monitoringScope,
                                                               &SettingsStore::setMonitoringScope),
                                {{"Check All Windows", MonitoringScope::allWindows},
                                 {"Check Specific Windows", MonitoringScope::specificApps}})
            .pickerStyle(PickerStyle::radioGroup),
    });
}

View PiPSettingsView::watchedSection(MonitoringScope scope) const {
    if (scope == MonitoringScope::specificApps)
        return Section("Apps to Watch",
                       {TextField("Search installed apps", searchText.binding()), appsOrProgress()});
    return Section(
        {Text("Mirrolet will offer Picture-in-Picture for the largest window of whichever app is currently "
              "frontmost.")
             .foregroundStyle(ForegroundStyle::secondary)});
}

View PiPSettingsView::appsOrProgress() const {
    return Switching<bool>(
        isLoadingApps.changes(), [isLoading = isLoadingApps] { return isLoading.get(); },
        [view = *this](bool isLoading) -> View {
            if (isLoading)
                return ProgressView("Scanning installed apps…").fullWidth().verticalPadding(24);
            return view.appList();
        });
}

View PiPSettingsView::appList() const {
    List::Content content;
    content.rows = [apps = installedApps, text = searchText] {
        std::vector<List::Row> rows;
        for (const InstalledApp& app : filtered(*apps.get(), text.get()))
            rows.push_back({app.bundleIdentifier, app.displayName, app.icon});
        return rows;
    };
    content.rowChanges = {installedApps.changes(), searchText.changes()};
    content.isOn = [store = store](const std::string& id) {
        return store->selectedAppIdentifiers().count(id) != 0;
    };
    content.setOn = [view = *this](const std::string& id, bool isOn) { view.setWatched(id, isOn); };
    content.checkChanges = store.changes();
    content.imageSide = 18;
    return List("Apps to Watch", std::move(content)).minHeight(200);
}

std::vector<InstalledApp> PiPSettingsView::filtered(const std::vector<InstalledApp>& apps,
                                                    const std::string& searchText) {
    if (searchText.empty())
        return apps;
    std::vector<InstalledApp> result;
    std::copy_if(apps.begin(), apps.end(), std::back_inserter(result),
                 [&searchText](const InstalledApp& app) {
                     return localizedCaseInsensitiveContains(app.displayName, searchText);
                 });
    return result;
}

void PiPSettingsView::setWatched(const std::string& identifier, bool isWatched) const {
    auto identifiers = store->selectedAppIdentifiers();
    if (isWatched)
        identifiers.insert(identifier);
    else
        identifiers.erase(identifier);
    store->setSelectedAppIdentifiers(std::move(identifiers));
}

void PiPSettingsView::loadInstalledApps() const {
    // The user may leave the tab and come back while a scan still runs. No second scan is needed, because the
    // running one fills the list.
    if (isLoadingApps.get())
        return;
    isLoadingApps.set(true);
    const auto scan = std::make_shared<DispatchQueue>("installedAppsScan", DispatchQoS::userInitiated);
    // The task is the last owner of the queue, so the queue's thread ends after the task.
    scan->async([scan, apps = installedApps.weak(), isLoading = isLoadingApps.weak()] {
        auto found =
            std::make_shared<const std::vector<InstalledApp>>(InstalledApp::scanInstalledApplications());
        DispatchQueue::main().async([found = std::move(found), apps, isLoading] {
            apps.set(found);
            isLoading.set(false);
        });
    });
}

} // namespace mirrolet
