#pragma once

#include "platform/desktop/HotKeys.h"
#include "platform/desktop/wayland/plasma/ShortcutService.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

/// Keeps the program's grabs (hot keys in use) and registers each as a shortcut with the session's shortcut
/// service. Registers them again after the service was restarted, and after a new keymap has changed their
/// combinations. Removes them from the service while they are suspended. Only one thread may use an object of
/// this class.
class HotKeyGrabs {
  public:
    using Report = std::function<void(GrabResult)>;
    /// Returns all combinations that the service may recognize when a key is pressed with modifier keys, in
    /// the service's numbers.
    using Combinations =
        std::function<std::vector<std::int32_t>(std::uint32_t evdevCode, std::uint32_t modifiers)>;
    /// Returns whether the key is down.
    using IsDown = std::function<bool(std::uint32_t evdevCode)>;

    HotKeyGrabs(ShortcutService& service, Combinations combinations, IsDown isDown)
        : service(service), combinations(std::move(combinations)), isDown(std::move(isDown)) {}

    /// Adds a grab. Calls `report` once, now or later. A grab whose result is not `held` is dropped.
    void grab(std::uint32_t number, std::uint32_t evdevCode, std::uint32_t modifiers, Report report);
    /// Sets the title for the next grab with this number.
    void setTitle(std::uint32_t number, std::string title) { titles[number] = std::move(title); }
    void release(std::uint32_t number);
    void releaseAll();
    void suspend(bool suspended);
    /// Called when the service has started or ended. Registers all grabs with a service that has started,
    /// because it knows no shortcut yet. Grabs that are made before the first call wait for that call.
    void setAvailable(bool available);
    /// Called when the keymap has changed. Registers each grab again whose combinations are different now.
    void keymapChanged();
    /// Called when the service reports a press. `name` is the shortcut's name. Returns the number of the
    /// grab, or none if the press is auto-repeat or the shortcut belongs to no grab.
    [[nodiscard]] std::optional<std::uint32_t> pressed(const std::string& name);
    /// Called when the service reports that a key of the shortcut was released.
    void released(const std::string& name);

  private:
    enum class Service { unknown, missing, running };
    struct Grab {
        std::uint32_t evdevCode = 0;
        std::uint32_t modifiers = 0;
        std::vector<std::int32_t> combinations;
        std::string title;
        Report report;           ///< Empty once the result is known.
        std::uint64_t asked = 0; ///< The number of the last add() for this grab.
        bool heldBefore = false; ///< True if the key was down already when the shortcut was added.
        bool isPressed = false;  ///< True from a reported press until the release.
    };
    using Grabs = std::map<std::uint32_t, Grab>;

    [[nodiscard]] Grabs::iterator find(const std::string& name);
    void ask(std::uint32_t number, Grab& grab);
    void askForAll();
    void answered(std::uint32_t number, std::uint64_t asked, ShortcutService::Answer answer);
    void refuse(std::uint32_t number, GrabResult result);

    ShortcutService& service;
    const Combinations combinations;
    const IsDown isDown;
    Grabs grabs;
    std::map<std::uint32_t, std::string> titles; ///< The titles of the next grabs.
    Service state = Service::unknown;
    bool isSuspended = false;
    std::uint64_t lastAsked = 0;
};

} // namespace mirrolet::platform::desktop::wayland
