#include "settings/SettingsStore.h"

#include "platform/foundation/UserDefaults.h"

#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace mirrolet {
namespace {

using platform::PropertyList;
using testing::ElementsAre;
using testing::HasSubstr;

class SettingsStoreTest : public testing::Test {
  protected:
    /// Returns all settings as text, each as "name=value;".
    static std::string described(const SettingsStore& store) {
        const auto snapshot = store.currentMonitoringSettings();
        std::ostringstream text;
        text << "scope=" << int(store.monitoringScope()) << "; apps=";
        for (const auto& each : store.selectedAppIdentifiers())
            text << each << ',';
        text << "; poll=" << store.pollInterval() << "; timeout=" << store.promptTimeout()
             << "; launch=" << store.startMonitoringOnLaunch() << "; top=" << store.pipAlwaysOnTop()
             << "; corner=" << int(store.pipCorner()) << "; show=" << store.shortcutKeyCode() << '+'
             << store.shortcutModifiers() << "; start=" << store.pipFrontmostShortcutKeyCode() << '+'
             << store.pipFrontmostShortcutModifiers() << ';';
        EXPECT_EQ(snapshot, (MonitoringSettings{store.monitoringScope(), store.selectedAppIdentifiers(),
                                                store.pollInterval()}));
        return text.str();
    }

    QTemporaryDir folder;
    platform::UserDefaults defaults{(folder.path() + "/defaults.json").toStdString()};
};

constexpr auto fresh = "scope=1; apps=net.whatsapp.WhatsApp,; poll=2; timeout=15; launch=1; top=1; corner=0; "
                       "show=35+2304; start=3+2304;";

TEST_F(SettingsStoreTest, AFreshInstallationHasTheDefaultsAndWritesNothing) {
    EXPECT_EQ(described(SettingsStore(defaults)), fresh);
    EXPECT_EQ(defaults.object("pollInterval"), PropertyList());
}

TEST_F(SettingsStoreTest, ReadsWhatFitsAndFallsBackWhereItDoesNot) {
    const struct {
        const char* name;
        PropertyList stored;
        const char* expected;
    } rows[] = {
        {"monitoringScope", "allWindows", "scope=0;"},
        {"monitoringScope", "AllWindows", fresh},
        {"monitoringScope", 0, fresh},
        {"selectedAppIdentifiers", PropertyList::Array{}, "apps=;"},
        {"selectedAppIdentifiers", PropertyList::Array{"b", "a", "b"}, "apps=a,b,;"},
        {"selectedAppIdentifiers", PropertyList::Array{"a", 1}, fresh},
        {"selectedAppIdentifiers", "a", fresh},
        {"pollInterval", 0.5, "poll=0.5;"},
        {"pollInterval", 600, "poll=600;"},
        {"pollInterval", "5", fresh},
        {"pollInterval", std::nan(""), fresh},
        {"pollInterval", std::numeric_limits<double>::infinity(), fresh},
        {"startMonitoringOnLaunch", false, "launch=0;"},
        {"startMonitoringOnLaunch", 0, "launch=0;"},
        {"startMonitoringOnLaunch", 0.0, "launch=0;"},
        {"startMonitoringOnLaunch", "false", fresh},
        {"pipCorner", "topLeft", "corner=3;"},
        {"pipCorner", "middle", fresh},
        {"shortcutKeyCode", 0, "show=0+2304;"},
        {"shortcutKeyCode", -1, fresh},
        {"shortcutKeyCode", 1.5, fresh},
        {"shortcutKeyCode", 4294967295u, "show=4294967295+2304;"},
        {"shortcutKeyCode", std::int64_t{4294967296} + 7, fresh},
        {"shortcutKeyCode", 1e300, fresh},
    };
    for (const auto& row : rows) {
        const auto before = defaults.object(row.name);
        defaults.set(row.name, row.stored);
        EXPECT_THAT(described(SettingsStore(defaults)), HasSubstr(row.expected)) << row.name;
        defaults.set(row.name, before);
    }
}

TEST_F(SettingsStoreTest, EveryAssignmentIsAnnouncedBeforeItIsMadeAndComesBackUnderItsOwnKey) {
    SettingsStore store(defaults);
    std::vector<double> seen;
    const auto subscription = store.objectWillChange.sink([&] { seen.push_back(store.pollInterval()); });
    store.setPollInterval(5);
    store.setPollInterval(5);
    EXPECT_THAT(seen, ElementsAre(2.0, 5.0));
    for (const auto* key :
         {"monitoringScope", "selectedAppIdentifiers", "pollInterval", "promptTimeout",
          "startMonitoringOnLaunch", "pipAlwaysOnTop", "pipCorner", "shortcutKeyCode", "shortcutModifiers",
          "pipFrontmostShortcutKeyCode", "pipFrontmostShortcutModifiers"})
        EXPECT_NE(defaults.object(key), PropertyList()) << key;

    store.setMonitoringScope(MonitoringScope::allWindows);
    store.setSelectedAppIdentifiers({"a", "b"});
    store.setPromptTimeout(3.5);
    store.setStartMonitoringOnLaunch(false);
    store.setPipAlwaysOnTop(false);
    store.setPipCorner(PiPCorner::topRight);
    store.setShortcutKeyCode(1);
    store.setShortcutModifiers(4294967295);
    store.setPipFrontmostShortcutKeyCode(4);
    store.setPipFrontmostShortcutModifiers(5);
    EXPECT_EQ(
        described(SettingsStore(defaults)),
        "scope=0; apps=a,b,; poll=5; timeout=3.5; launch=0; top=0; corner=2; show=1+4294967295; start=4+5;");
    EXPECT_EQ(seen.size(), 12u);
}

} // namespace
} // namespace mirrolet
