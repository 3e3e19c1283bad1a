#include "platform/desktop/fake/FakeApplications.h"

#include <utility>

namespace mirrolet::platform::desktop::fake {

void FakeApplications::add(Application application) {
    const std::lock_guard lock(mutex);
    const auto pid = application.pid;
    applications[pid] = std::move(application);
}

void FakeApplications::setFrontmost(std::optional<std::int32_t> pid) {
    const std::lock_guard lock(mutex);
    front = pid;
}

int FakeApplications::lookUps(std::int32_t pid) const {
    const std::lock_guard lock(mutex);
    const auto found = lookUpCounts.find(pid);
    return found == lookUpCounts.end() ? 0 : found->second;
}

std::optional<Application> FakeApplications::frontmost() {
    const std::lock_guard lock(mutex);
    if (!front)
        return std::nullopt;
    const auto found = applications.find(*front);
    return found == applications.end() ? Application{*front, {}, {}} : found->second;
}

std::optional<Application> FakeApplications::running(std::int32_t pid) {
    const std::lock_guard lock(mutex);
    ++lookUpCounts[pid];
    const auto found = applications.find(pid);
    return found == applications.end() ? std::nullopt : std::optional(found->second);
}

} // namespace mirrolet::platform::desktop::fake
