#include "settings/SettingsStore.h"

#include "platform/foundation/UserDefaults.h"

#include <optional>
#include <utility>

namespace mirrolet {

using platform::PropertyList;
using platform::UserDefaults;

namespace {

// The modifier mask of both default shortcuts, Option-Command-P and Option-Command-F.
constexpr std::uint32_t defaultShortcutModifiers = 2304;
constexpr std::uint32_t defaultShortcutKeyCode = 35;
constexpr std::uint32_t defaultFrontmostShortcutKeyCode = 3;

const std::set<std::string>& defaultApps() {
    static const std::set<std::string> apps = {"net.whatsapp.WhatsApp"};
    return apps;
}

// Loads the scope. A missing or unknown value gives specificApps, because a damaged file must not make the
// program watch more windows.
MonitoringScope loadScope(const UserDefaults& defaults) {
    const auto stored = defaults.object("monitoringScope");
    const auto* raw = stored.asString();
    return (raw ? monitoringScopeFromRawValue(*raw) : std::nullopt).value_or(MonitoringScope::specificApps);
}

// Loads the watched applications. If an element is not a string, returns the default instead of the array. An
// empty array is valid, because the user may choose no application.
std::set<std::string> loadApps(const UserDefaults& defaults) {
    const auto stored = defaults.object("selectedAppIdentifiers");
    const auto* elements = stored.asArray();
    if (!elements)
        return defaultApps();
    std::set<std::string> apps;
    for (const auto& element : *elements) {
        const auto* identifier = element.asString();
        if (!identifier)
            return defaultApps();
        apps.insert(*identifier);
    }
    return apps;
}

PiPCorner loadCorner(const UserDefaults& defaults) {
    const auto stored = defaults.object("pipCorner");
    const auto* raw = stored.asString();
    return (raw ? pipCornerFromRawValue(*raw) : std::nullopt).value_or(PiPCorner::bottomRight);
}

PropertyList arrayOf(const std::set<std::string>& strings) {
    return PropertyList::Array(strings.begin(), strings.end());
}

} // namespace

SettingsStore& SettingsStore::shared() {
    static auto& store = *new SettingsStore(UserDefaults::standard());
    return store;
}

SettingsStore::SettingsStore(UserDefaults& defaults)
    : scope(loadScope(defaults)), appIdentifiers(loadApps(defaults)),
      pollSeconds(defaults.object("pollInterval").asDouble().value_or(2.0)),
      promptSeconds(defaults.object("promptTimeout").asDouble().value_or(15.0)),
      startsMonitoring(defaults.object("startMonitoringOnLaunch").asBool().value_or(true)),
      alwaysOnTop(defaults.object("pipAlwaysOnTop").asBool().value_or(true)), corner(loadCorner(defaults)),
      keyCode(defaults.object("shortcutKeyCode").asUInt32().value_or(defaultShortcutKeyCode)),
      modifiers(defaults.object("shortcutModifiers").asUInt32().value_or(defaultShortcutModifiers)),
      frontmostKeyCode(defaults.object("pipFrontmostShortcutKeyCode")
                           .asUInt32()
                           .value_or(defaultFrontmostShortcutKeyCode)),
      frontmostModifiers(
          defaults.object("pipFrontmostShortcutModifiers").asUInt32().value_or(defaultShortcutModifiers)),
      snapshot{scope, appIdentifiers, pollSeconds}, defaults(defaults) {}

MonitoringSettings SettingsStore::currentMonitoringSettings() const {
    const platform::MutexLock guard(lock);
    return snapshot;
}

void SettingsStore::save() {
    defaults.set("monitoringScope", rawValue(scope));
    defaults.set("selectedAppIdentifiers", arrayOf(appIdentifiers));
    defaults.set("pollInterval", pollSeconds);
    defaults.set("promptTimeout", promptSeconds);
    defaults.set("startMonitoringOnLaunch", startsMonitoring);
    defaults.set("pipAlwaysOnTop", alwaysOnTop);
    defaults.set("pipCorner", rawValue(corner));
    defaults.set("shortcutKeyCode", keyCode);
    defaults.set("shortcutModifiers", modifiers);
    defaults.set("pipFrontmostShortcutKeyCode", frontmostKeyCode);
    defaults.set("pipFrontmostShortcutModifiers", frontmostModifiers);

    const platform::MutexLock guard(lock);
    snapshot = {scope, appIdentifiers, pollSeconds};
}

} // namespace mirrolet
