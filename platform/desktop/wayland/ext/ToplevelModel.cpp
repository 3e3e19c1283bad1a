#include "platform/desktop/wayland/ext/ToplevelModel.h"

#include <algorithm>
#include <wlr-foreign-toplevel-management-unstable-v1-client-protocol.h>

namespace mirrolet::platform::desktop::wayland {

namespace {

constexpr std::uint32_t activated = 1U << ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED;

} // namespace

void ToplevelModel::publish(const ListedToplevel& window) {
    const MutexLock lock(modelMutex);
    const auto known = std::ranges::find(listed, window.number, &ListedToplevel::number);
    if (known == listed.end())
        listed.push_back(window);
    else
        *known = window;
    pairs.update(listed, managed);
}

void ToplevelModel::remove(WindowNumber number) {
    const MutexLock lock(modelMutex);
    std::erase_if(listed, [number](const ListedToplevel& window) { return window.number == number; });
    pairs.update(listed, managed);
}

void ToplevelModel::publish(const ManagedToplevel& window) {
    const MutexLock lock(modelMutex);
    const auto known = std::ranges::find(managed, window.id, &ManagedToplevel::id);
    const auto before = known == managed.end() ? 0 : known->states;
    if ((window.states & ~before & activated) != 0)
        activations[window.id] = ++lastActivation;
    if (known == managed.end())
        managed.push_back(window);
    else
        *known = window;
    pairs.update(listed, managed);
}

void ToplevelModel::removeManaged(std::uint32_t id) {
    const MutexLock lock(modelMutex);
    std::erase_if(managed, [id](const ManagedToplevel& window) { return window.id == id; });
    activations.erase(id);
    pairs.update(listed, managed);
}

ToplevelModel::Ranked ToplevelModel::describe(const ListedToplevel& listedWindow) const {
    Ranked result{{listedWindow.number, listedWindow.title, listedWindow.applicationId}};
    const auto id = pairs.partnerOf(listedWindow.number);
    const auto partner = id ? std::ranges::find(managed, *id, &ManagedToplevel::id) : managed.end();
    if (partner == managed.end())
        return result;
    result.window.states = partner->states;
    if (result.window.applicationId.empty())
        result.window.applicationId = partner->applicationId;
    if (const auto found = activations.find(*id); found != activations.end())
        result.activation = found->second;
    return result;
}

std::vector<ToplevelModel::Ranked> ToplevelModel::ranked() const {
    std::vector<Ranked> all;
    all.reserve(listed.size());
    for (auto window = listed.rbegin(); window != listed.rend(); ++window)
        all.push_back(describe(*window));
    std::ranges::stable_sort(all, std::ranges::greater(), &Ranked::activation);
    return all;
}

std::vector<Toplevel> ToplevelModel::frontToBack() const {
    const MutexLock lock(modelMutex);
    std::vector<Toplevel> windows;
    windows.reserve(listed.size());
    for (auto& each : ranked())
        windows.push_back(std::move(each.window));
    return windows;
}

std::optional<Toplevel> ToplevelModel::find(WindowNumber number) const {
    const MutexLock lock(modelMutex);
    const auto found = std::ranges::find(listed, number, &ListedToplevel::number);
    return found == listed.end() ? std::nullopt : std::optional(describe(*found).window);
}

std::optional<Toplevel> ToplevelModel::active(const std::function<bool(const Toplevel&)>& isOurs) const {
    const MutexLock lock(modelMutex);
    auto windows = ranked();
    const bool oursIsActive = std::erase_if(windows, [&](const Ranked& each) {
                                  return isOurs(each.window) && isActive(each.window);
                              }) > 0;
    const auto found = std::ranges::find_if(windows, [&](const Ranked& each) {
        return !isOurs(each.window) && (isActive(each.window) || (oursIsActive && each.activation > 0));
    });
    return found == windows.end() ? std::nullopt : std::optional(found->window);
}

} // namespace mirrolet::platform::desktop::wayland
