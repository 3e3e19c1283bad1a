#include "settings/SettingsStore.h"

#include "platform/foundation/UserDefaults.h"

#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <thread>

namespace mirrolet {
namespace {

using platform::PropertyList;
using testing::ElementsAre;

class SettingsStoreTest : public testing::Test {
  protected:
    QTemporaryDir folder;
    platform::UserDefaults defaults{(folder.path() + "/defaults.json").toStdString()};
};

TEST_F(SettingsStoreTest, AFreshInstallationHasTheDefaultsAndWritesNothing) {
    const SettingsStore store(defaults);
    EXPECT_EQ(store.monitoringScope(), MonitoringScope::specificApps);
    EXPECT_THAT(store.selectedAppIdentifiers(), ElementsAre("net.whatsapp.WhatsApp"));
    EXPECT_EQ(store.pollInterval(), 2.0);
    EXPECT_EQ(store.promptTimeout(), 15.0);
    EXPECT_TRUE(store.startMonitoringOnLaunch());
    EXPECT_TRUE(store.pipAlwaysOnTop());
    EXPECT_EQ(store.pipCorner(), PiPCorner::bottomRight);
    EXPECT_EQ(store.shortcutKeyCode(), 35u);
    EXPECT_EQ(store.shortcutModifiers(), 2304u);
    EXPECT_EQ(store.pipFrontmostShortcutKeyCode(), 3u);
    EXPECT_EQ(store.pipFrontmostShortcutModifiers(), 2304u);
    EXPECT_EQ(store.currentMonitoringSettings(),
              (MonitoringSettings{MonitoringScope::specificApps, {"net.whatsapp.WhatsApp"}, 2.0}));
    EXPECT_EQ(defaults.object("pollInterval"), PropertyList());
}

TEST_F(SettingsStoreTest, ReadsWhatFitsAndFallsBackWhereItDoesNot) {
    using Check = std::function<bool(const SettingsStore&)>;
    const auto selection = [](std::set<std::string> expected) -> Check {
        return [=](const SettingsStore& store) { return store.selectedAppIdentifiers() == expected; };
    };
    const auto poll = [](double expected) -> Check {
        return [=](const SettingsStore& store) {
            return store.pollInterval() == expected &&
                   store.currentMonitoringSettings().pollInterval == expected;
        };
    };
    const auto corner = [](PiPCorner expected) -> Check {
        return [=](const SettingsStore& store) { return store.pipCorner() == expected; };
    };
    const auto scope = [](MonitoringScope expected) -> Check {
        return [=](const SettingsStore& store) { return store.monitoringScope() == expected; };
    };
    const auto launches = [](bool expected) -> Check {
        return [=](const SettingsStore& store) { return store.startMonitoringOnLaunch() == expected; };
    };
    const auto key = [](std::uint32_t expected) -> Check {
        return [=](const SettingsStore& store) { return store.shortcutKeyCode() == expected; };
    };
    const struct {
        const char* name;
        PropertyList stored;
        Check check;
    } rows[] = {
        {"monitoringScope", "allWindows", scope(MonitoringScope::allWindows)},
        {"monitoringScope", "AllWindows", scope(MonitoringScope::specificApps)},
        {"monitoringScope", 0, scope(MonitoringScope::specificApps)},
        {"selectedAppIdentifiers", PropertyList::Array{}, selection({})},
        {"selectedAppIdentifiers", PropertyList::Array{"b", "a", "b"}, selection({"a", "b"})},
        {"selectedAppIdentifiers", PropertyList::Array{"a", 1}, selection({"net.whatsapp.WhatsApp"})},
        {"selectedAppIdentifiers", "a", selection({"net.whatsapp.WhatsApp"})},
        {"pollInterval", 0.5, poll(0.5)},
        {"pollInterval", 600, poll(600)},
        {"pollInterval", "5", poll(2)},
        {"startMonitoringOnLaunch", false, launches(false)},
        {"startMonitoringOnLaunch", 0, launches(false)},
        {"startMonitoringOnLaunch", "false", launches(true)},
        {"pipCorner", "topLeft", corner(PiPCorner::topLeft)},
        {"pipCorner", "middle", corner(PiPCorner::bottomRight)},
        {"shortcutKeyCode", 0, key(0)},
        {"shortcutKeyCode", -1, key(35)},
        {"shortcutKeyCode", 1.5, key(35)},
    };
    for (const auto& row : rows) {
        const auto before = defaults.object(row.name);
        defaults.set(row.name, row.stored);
        EXPECT_TRUE(row.check(SettingsStore(defaults))) << row.name << " row " << &row - rows;
        defaults.set(row.name, before);
    }
}

TEST_F(SettingsStoreTest, EveryAssignmentIsAnnouncedBeforeItIsMadeAndSavesEverything) {
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
    MonitoringSettings elsewhere;
    std::thread([&] { elsewhere = store.currentMonitoringSettings(); }).join();
    EXPECT_EQ(elsewhere.pollInterval, 5);
}

TEST_F(SettingsStoreTest, EverySettingComesBackUnderItsOwnKey) {
    SettingsStore store(defaults);
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
    const SettingsStore again(defaults);
    EXPECT_EQ(again.currentMonitoringSettings(),
              (MonitoringSettings{MonitoringScope::allWindows, {"a", "b"}, 2.0}));
    EXPECT_EQ(again.promptTimeout(), 3.5);
    EXPECT_FALSE(again.startMonitoringOnLaunch());
    EXPECT_FALSE(again.pipAlwaysOnTop());
    EXPECT_EQ(again.pipCorner(), PiPCorner::topRight);
    EXPECT_EQ(again.shortcutKeyCode(), 1u);
    EXPECT_EQ(again.shortcutModifiers(), 4294967295u);
    EXPECT_EQ(again.pipFrontmostShortcutKeyCode(), 4u);
    EXPECT_EQ(again.pipFrontmostShortcutModifiers(), 5u);
}

} // namespace
} // namespace mirrolet
