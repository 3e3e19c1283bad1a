#include "platform/desktop/applications/ApplicationRegistry.h"

#include "platform/desktop/applications/ApplicationResolver.h"

#include <algorithm>

namespace mirrolet::platform::desktop {

namespace {

/// The highest PID that any Linux kernel can be configured to give.
constexpr std::int32_t highestPid = 4194304;

} // namespace

ApplicationRegistry::ProcessKey ApplicationRegistry::keyOf(const WindowOwner& owner) {
    return {owner.pid, owner.pid == 0 ? owner.client : 0};
}

std::vector<Application> ApplicationRegistry::applicationsOf(const std::vector<WindowOwner>& windows,
                                                             bool complete) {
    const MutexLock lock(registryMutex);
    readEntriesAnew();
    if (complete) {
        for (auto& [window, known] : windowsKnown)
            known.listed = false;
    }
    std::vector<Application> applications;
    applications.reserve(windows.size());
    for (const auto& owner : windows)
        applications.push_back(applicationOf(owner));
    if (complete)
        forgetUnlisted();
    for (auto& [key, process] : processesKnown)
        process.facts.reset();
    return applications;
}

void ApplicationRegistry::readEntriesAnew() {
    if (!index.refresh())
        return;
    windowsKnown.clear();
    changed = true;
}

Application ApplicationRegistry::applicationOf(const WindowOwner& owner) {
    auto& known = windowsKnown[owner.window];
    known.listed = true;
    if (known.owner != owner) {
        known = {owner, resolve(owner)};
        changed = true;
    }
    return known.application;
}

Application ApplicationRegistry::resolve(const WindowOwner& owner) {
    auto& process = processOf(owner);
    if (!process.facts)
        process.facts = processes.facts(owner.pid);
    const auto* entry = entryOfWindow(owner.windowClass, *process.facts, index.entries());
    Application application;
    if (entry) {
        application.name = entry->name;
        application.identifier = entry->id;
    } else {
        application.name = owner.windowClass.name.empty() ? process.facts->name : owner.windowClass.name;
    }
    const auto entryId = owner.pid == ownPid ? std::string() : application.identifier.value_or(std::string());
    const auto found = std::find_if(process.applications.begin(), process.applications.end(),
                                    [&](const Numbered& numbered) { return numbered.entryId == entryId; });
    if (found != process.applications.end()) {
        application.pid = found->application.pid;
        found->application = application;
        return application;
    }
    application.pid = numberFor(process, owner.pid);
    process.applications.push_back({entryId, application});
    return application;
}

ApplicationRegistry::Process& ApplicationRegistry::processOf(const WindowOwner& owner) {
    const auto key = keyOf(owner);
    const auto [at, added] = processesKnown.try_emplace(key);
    auto& process = at->second;
    process.listed = true;
    if (process.facts)
        return process;
    const auto startTime = processes.startTime(owner.pid).value_or(0);
    // If the start time differs, the old process has ended, and the kernel has given its PID to another
    // process.
    if (!added && process.startTime != startTime)
        process = {};
    process.startTime = startTime;
    return process;
}

std::int32_t ApplicationRegistry::numberFor(const Process& process, std::int32_t pid) {
    if (pid != 0 && process.applications.empty())
        return pid;
    // Each number is given again only after this many other numbers.
    constexpr std::uint32_t most = 2'000'000'000;
    return highestPid + 1 + static_cast<std::int32_t>(numbersGiven++ % most);
}

void ApplicationRegistry::forgetUnlisted() {
    const auto erased = std::erase_if(windowsKnown, [](const auto& known) { return !known.second.listed; });
    if (erased == 0 && !changed)
        return;
    changed = false;
    for (auto& [key, process] : processesKnown)
        process.listed = false;
    for (const auto& [window, known] : windowsKnown)
        processesKnown[keyOf(known.owner)].listed = true;
    std::erase_if(processesKnown, [this](const auto& item) { return !lives(item.first, item.second); });
}

bool ApplicationRegistry::lives(const ProcessKey& key, const Process& process) const {
    return process.listed || (key.first != 0 && processes.startTime(key.first) == process.startTime);
}

std::optional<Application> ApplicationRegistry::running(std::int32_t number) {
    const MutexLock lock(registryMutex);
    for (const auto& [key, process] : processesKnown) {
        for (const auto& [entryId, application] : process.applications) {
            if (application.pid == number)
                return lives(key, process) ? std::optional(application) : std::nullopt;
        }
    }
    return std::nullopt;
}

} // namespace mirrolet::platform::desktop
