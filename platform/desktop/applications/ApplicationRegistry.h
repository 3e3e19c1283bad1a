#pragma once

#include "platform/desktop/Applications.h"
#include "platform/desktop/WindowList.h"
#include "platform/desktop/applications/DesktopEntryIndex.h"
#include "platform/desktop/applications/ProcFolder.h"
#include "platform/desktop/applications/WindowOwner.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop {

/// Which application each window belongs to, and the applications' numbers, which stay while the process
/// lives. What was found out once is remembered as long as the window is listed, so that an unchanged desktop
/// costs no look at processes. Any thread.
class ApplicationRegistry {
  public:
    /// All windows of `ownPid` are one application of that number.
    ApplicationRegistry(std::int32_t ownPid, ProcFolder processes, DesktopEntryIndex entryIndex)
        : ownPid(ownPid), processes(std::move(processes)), index(std::move(entryIndex)) {}

    /// The application of each of the windows, in their order. `complete` says that these are all windows on
    /// screen: what is known of others is forgotten.
    std::vector<Application> applicationsOf(const std::vector<WindowOwner>& windows, bool complete);
    /// None once no window of it is listed and its process has ended.
    std::optional<Application> running(std::int32_t number);

  private:
    struct Numbered {
        std::string entryId; ///< Empty without an entry.
        Application application;
    };
    struct Process {
        std::uint64_t startTime = 0;
        bool listed = true; ///< One of its windows was listed last time, so that it lives.
        std::vector<Numbered> applications;
        std::optional<ProcessFacts> facts; ///< Only during one call.
    };
    /// The process; for a client whose process is unknown, (0, client).
    using ProcessKey = std::pair<std::int32_t, std::uint32_t>;
    struct Known {
        WindowOwner owner;
        Application application;
        bool listed = true;
    };

    static ProcessKey keyOf(const WindowOwner& owner);
    void readEntriesAnew();
    Application applicationOf(const WindowOwner& owner);
    Application resolve(const WindowOwner& owner);
    Process& processOf(const WindowOwner& owner);
    std::int32_t numberFor(const Process& process, std::int32_t pid);
    void forgetUnlisted();
    [[nodiscard]] bool lives(const ProcessKey& key, const Process& process) const;

    const std::int32_t ownPid;
    const ProcFolder processes;

    std::mutex lock; ///< Guards all below.
    DesktopEntryIndex index;
    std::unordered_map<WindowNumber, Known> windowsKnown;
    std::map<ProcessKey, Process> processesKnown;
    std::uint32_t numbersGiven = 0;
    bool changed = false; ///< A window was new to the book since it forgot the unlisted ones.
};

} // namespace mirrolet::platform::desktop
