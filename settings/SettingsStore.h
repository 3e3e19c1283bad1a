#pragma once

#include "platform/combine/ObservableObjectPublisher.h"
#include "platform/foundation/NSLock.h"
#include "settings/MonitoringScope.h"
#include "settings/MonitoringSettings.h"
#include "settings/PiPCorner.h"

#include <cstdint>
#include <set>
#include <string>

namespace mirrolet::platform {
class UserDefaults;
}

namespace mirrolet {

/// Holds every setting of the user. Main thread only, except currentMonitoringSettings(). Each setter
/// announces the change, makes the change and saves all values, even if the new value equals the old one.
class SettingsStore {
  public:
    /// Returns the program's only store, which uses UserDefaults::standard(). The store is made on first use
    /// and never destroyed.
    static SettingsStore& shared();

    /// Loads the values from `defaults`, which must outlive the store. A setting with a missing or unusable
    /// value gets its default value. Writes nothing.
    explicit SettingsStore(platform::UserDefaults& defaults);

    /// Announces each change before it is made. A subscriber that wants the new value reads the store on a
    /// later turn of the main loop.
    platform::ObservableObjectPublisher objectWillChange;

    [[nodiscard]] MonitoringScope monitoringScope() const { return scope; }
    void setMonitoringScope(MonitoringScope value) { assign(scope, value); }
    /// Returns the bundle identifiers of the watched applications.
    [[nodiscard]] const std::set<std::string>& selectedAppIdentifiers() const { return appIdentifiers; }
    void setSelectedAppIdentifiers(std::set<std::string> value) { assign(appIdentifiers, std::move(value)); }
    /// Returns seconds. The number comes from the settings file unchecked, so it may be negative or huge.
    [[nodiscard]] double pollInterval() const { return pollSeconds; }
    void setPollInterval(double value) { assign(pollSeconds, value); }
    /// Returns seconds. The number comes from the settings file unchecked, so it may be negative or huge.
    [[nodiscard]] double promptTimeout() const { return promptSeconds; }
    void setPromptTimeout(double value) { assign(promptSeconds, value); }
    [[nodiscard]] bool startMonitoringOnLaunch() const { return startsMonitoring; }
    void setStartMonitoringOnLaunch(bool value) { assign(startsMonitoring, value); }
    [[nodiscard]] bool pipAlwaysOnTop() const { return alwaysOnTop; }
    void setPipAlwaysOnTop(bool value) { assign(alwaysOnTop, value); }
    [[nodiscard]] PiPCorner pipCorner() const { return corner; }
    void setPipCorner(PiPCorner value) { assign(corner, value); }

    // Each shortcut is a virtual key code and a Carbon modifier mask. The first shortcut shows and hides the
    // mirror. The second shortcut starts and closes a mirror of the frontmost application.
    [[nodiscard]] std::uint32_t shortcutKeyCode() const { return keyCode; }
    void setShortcutKeyCode(std::uint32_t value) { assign(keyCode, value); }
    [[nodiscard]] std::uint32_t shortcutModifiers() const { return modifiers; }
    void setShortcutModifiers(std::uint32_t value) { assign(modifiers, value); }
    [[nodiscard]] std::uint32_t pipFrontmostShortcutKeyCode() const { return frontmostKeyCode; }
    void setPipFrontmostShortcutKeyCode(std::uint32_t value) { assign(frontmostKeyCode, value); }
    [[nodiscard]] std::uint32_t pipFrontmostShortcutModifiers() const { return frontmostModifiers; }
    void setPipFrontmostShortcutModifiers(std::uint32_t value) { assign(frontmostModifiers, value); }

    /// Returns a copy of the settings that the monitor needs. The copy lacks a change that the main thread is
    /// still making. Any thread.
    [[nodiscard]] MonitoringSettings currentMonitoringSettings() const;

  private:
    template <class Value> void assign(Value& member, Value value) {
        objectWillChange.send();
        member = std::move(value);
        save();
    }
    void save();

    MonitoringScope scope;
    std::set<std::string> appIdentifiers;
    double pollSeconds;
    double promptSeconds;
    bool startsMonitoring;
    bool alwaysOnTop;
    PiPCorner corner;
    std::uint32_t keyCode;
    std::uint32_t modifiers;
    std::uint32_t frontmostKeyCode;
    std::uint32_t frontmostModifiers;
    /// No other mutex is locked while this one is locked, so there can be no deadlock.
    mutable platform::NSLock lock;
    MonitoringSettings snapshot MIRROLET_GUARDED_BY(lock);
    platform::UserDefaults& defaults;
};

} // namespace mirrolet
