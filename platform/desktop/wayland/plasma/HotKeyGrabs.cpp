#include "platform/desktop/wayland/plasma/HotKeyGrabs.h"

#include "platform/foundation/NSLog.h"

#include <algorithm>

namespace mirrolet::platform::desktop::wayland {

namespace {

/// Each shortcut's name begins like this. KWin does not write such shortcuts into the user's settings, so a
/// program that is killed leaves nothing behind there.
constexpr std::string_view sessionPrefix = "_k_session:";

std::string nameOf(std::uint32_t number) {
    return std::string(sessionPrefix) + std::to_string(number);
}

} // namespace

void HotKeyGrabs::grab(std::uint32_t number, std::uint32_t evdevCode, std::uint32_t modifiers,
                       Report report) {
    release(number);
    auto title = std::exchange(titles[number], {});
    titles.erase(number);
    auto keys = combinations(evdevCode, modifiers);
    if (keys.empty() || state == Service::missing) {
        report(GrabResult::invalid);
        return;
    }
    auto& made = grabs[number];
    made.evdevCode = evdevCode;
    made.modifiers = modifiers;
    made.combinations = std::move(keys);
    made.title = std::move(title);
    made.report = std::move(report);
    if (state == Service::running)
        ask(number, made);
}

void HotKeyGrabs::release(std::uint32_t number) {
    if (grabs.erase(number) > 0 && state == Service::running)
        service.remove(nameOf(number));
}

void HotKeyGrabs::releaseAll() {
    while (!grabs.empty())
        release(grabs.begin()->first);
}

void HotKeyGrabs::suspend(bool suspended) {
    if (std::exchange(isSuspended, suspended) == suspended || state != Service::running)
        return;
    if (!suspended) {
        askForAll();
        return;
    }
    for (const auto& [number, grab] : grabs)
        service.remove(nameOf(number));
}

void HotKeyGrabs::setAvailable(bool available) {
    state = available ? Service::running : Service::missing;
    if (available) {
        askForAll();
        return;
    }
    // The service is gone, so it will not answer. Grabs that still wait for its answer are reported as
    // failed. The others are kept until the service comes back.
    std::vector<std::uint32_t> waiting;
    for (const auto& [number, grab] : grabs)
        if (grab.report)
            waiting.push_back(number);
    for (const auto number : waiting)
        refuse(number, GrabResult::invalid);
}

void HotKeyGrabs::keymapChanged() {
    std::vector<std::uint32_t> changed;
    for (auto& [number, grab] : grabs) {
        auto keys = combinations(grab.evdevCode, grab.modifiers);
        if (keys == grab.combinations)
            continue;
        grab.combinations = std::move(keys);
        changed.push_back(number);
    }
    if (state != Service::running || isSuspended)
        return;
    // All changed shortcuts are removed before the first is added, because two may have swapped their
    // combinations.
    for (const auto number : changed)
        service.remove(nameOf(number));
    for (const auto number : changed)
        ask(number, grabs[number]);
}

std::optional<std::uint32_t> HotKeyGrabs::pressed(const std::string& name) {
    const auto found = find(name);
    if (found == grabs.end())
        return std::nullopt;
    auto& grab = found->second;
    // If a shortcut is added while its key is down, KWin reports the auto-repeat of that key as presses. They
    // are ignored.
    grab.heldBefore = grab.heldBefore && isDown(grab.evdevCode);
    if (grab.heldBefore || std::exchange(grab.isPressed, true))
        return std::nullopt;
    return found->first;
}

void HotKeyGrabs::released(const std::string& name) {
    if (const auto found = find(name); found != grabs.end())
        found->second.heldBefore = found->second.isPressed = false;
}

HotKeyGrabs::Grabs::iterator HotKeyGrabs::find(const std::string& name) {
    return std::find_if(grabs.begin(), grabs.end(),
                        [&name](const auto& entry) { return nameOf(entry.first) == name; });
}

/// Registers a grab. A new grab is registered even while the grabs are suspended, because its caller must be
/// told whether the combination is taken.
void HotKeyGrabs::ask(std::uint32_t number, Grab& grab) {
    const auto asked = grab.asked = ++lastAsked;
    if (grab.combinations.empty()) {
        refuse(number, GrabResult::invalid);
        return;
    }
    grab.heldBefore = isDown(grab.evdevCode);
    grab.isPressed = false;
    service.add(nameOf(number), grab.title, grab.combinations,
                [this, number, asked](auto answer) { answered(number, asked, answer); });
}

void HotKeyGrabs::askForAll() {
    std::vector<std::uint32_t> numbers;
    for (const auto& [number, grab] : grabs)
        if (!isSuspended || grab.report)
            numbers.push_back(number);
    for (const auto number : numbers)
        ask(number, grabs[number]);
}

void HotKeyGrabs::answered(std::uint32_t number, std::uint64_t asked, ShortcutService::Answer answer) {
    const auto found = grabs.find(number);
    if (found == grabs.end() || found->second.asked != asked)
        return; // The grab was released, or registered again.
    if (answer != ShortcutService::Answer::granted) {
        service.remove(nameOf(number));
        refuse(number, answer == ShortcutService::Answer::taken ? GrabResult::taken : GrabResult::invalid);
        return;
    }
    if (isSuspended)
        service.remove(nameOf(number));
    if (const auto report = std::exchange(found->second.report, nullptr))
        report(GrabResult::held);
}

/// If the grab is new, reports that it failed and drops it. A grab that was granted earlier is kept, because
/// the next keymap or the next start of the service may make it available again.
void HotKeyGrabs::refuse(std::uint32_t number, GrabResult result) {
    const auto found = grabs.find(number);
    if (const auto report = std::exchange(found->second.report, nullptr)) {
        grabs.erase(found);
        report(result);
        return;
    }
    NSLog("Plasma: hot key " + std::to_string(number) + " is out of use: " +
          (result == GrabResult::taken          ? "its combination was taken by another program"
           : found->second.combinations.empty() ? "its combination is not on this keyboard any more"
                                                : "the session's shortcut service did not answer"));
}

} // namespace mirrolet::platform::desktop::wayland
