#pragma once

#include "platform/desktop/Applications.h"
#include "platform/desktop/WindowList.h"
#include "platform/desktop/applications/DesktopEntryIndex.h"
#include "platform/desktop/applications/ProcFolder.h"
#include "platform/desktop/applications/WindowOwner.h"
#include "platform/foundation/Mutex.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop {

/// Knows the application of each window, and gives each application a number that stays the same while the
/// process of the application lives. Remembers a window's application until the window leaves the list of
/// windows on screen, so that facts about processes are read only after this list has changed. May be used by
/// any thread.
class ApplicationRegistry {
  public:
    /// All windows of the process `ownPid` belong to one application, whose number is `ownPid`.
    ApplicationRegistry(std::int32_t ownPid, ProcFolder processes, DesktopEntryIndex entryIndex)
        : ownPid(ownPid), processes(std::move(processes)), index(std::move(entryIndex)) {}

    /// Returns the application of each window, in the order of the windows. `complete` tells that the list
    /// holds all windows on screen. All other windows are then forgotten.
    std::vector<Application> applicationsOf(const std::vector<WindowOwner>& windows, bool complete);
    /// Returns the application with this number. Returns none if the application has no listed window and its
    /// process has ended.
    std::optional<Application> running(std::int32_t number);

  private:
    struct Numbered {
        std::string entryId; ///< Empty for an application without a desktop entry.
        Application application;
    };
    struct Process {
        std::uint64_t startTime = 0;
        bool listed = true; ///< Whether the last complete list had a window of the process.
        std::vector<Numbered> applications;
        std::optional<ProcessFacts> facts; ///< Set only during a call of applicationsOf().
    };
    /// Identifies a process by (PID, 0). If the PID is unknown, identifies the process by (0, client), where
    /// `client` is the number that the display server gave to the process as its client.
    using ProcessKey = std::pair<std::int32_t, std::uint32_t>;
    struct Known {
        WindowOwner owner;
        Application application;
        bool listed = true;
    };

    static ProcessKey keyOf(const WindowOwner& owner);
    void readEntriesAnew() MIRROLET_REQUIRES(registryMutex);
    Application applicationOf(const WindowOwner& owner) MIRROLET_REQUIRES(registryMutex);
    Application resolve(const WindowOwner& owner) MIRROLET_REQUIRES(registryMutex);
    Process& processOf(const WindowOwner& owner) MIRROLET_REQUIRES(registryMutex);
    std::int32_t numberFor(const Process& process, std::int32_t pid) MIRROLET_REQUIRES(registryMutex);
    void forgetUnlisted() MIRROLET_REQUIRES(registryMutex);
    [[nodiscard]] bool lives(const ProcessKey& key, const Process& process) const;

    const std::int32_t ownPid;
    const ProcFolder processes;

    Mutex registryMutex;
    DesktopEntryIndex index MIRROLET_GUARDED_BY(registryMutex);
    std::unordered_map<WindowNumber, Known> windowsKnown MIRROLET_GUARDED_BY(registryMutex);
    std::map<ProcessKey, Process> processesKnown MIRROLET_GUARDED_BY(registryMutex);
    std::uint32_t numbersGiven MIRROLET_GUARDED_BY(registryMutex) = 0;
    /// Makes forgetUnlisted() look for processes that have ended. Set when a window was added, and when all
    /// windows were forgotten.
    bool changed MIRROLET_GUARDED_BY(registryMutex) = false;
};

} // namespace mirrolet::platform::desktop
