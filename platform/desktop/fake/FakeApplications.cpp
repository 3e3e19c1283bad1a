#include "platform/desktop/fake/FakeApplications.h"

#include <utility>

namespace mirrolet::platform::desktop::fake {

void FakeApplications::add(Application application) {
    const MutexLock lock(applicationsMutex);
    const auto pid = application.pid;
    applications[pid] = std::move(application);
}

void FakeApplications::setFrontmost(std::optional<std::int32_t> pid) {
    const MutexLock lock(applicationsMutex);
    front = pid;
}

int FakeApplications::lookUps(std::int32_t pid) const {
    const MutexLock lock(applicationsMutex);
    const auto found = lookUpCounts.find(pid);
    return found == lookUpCounts.end() ? 0 : found->second;
}

std::optional<Application> FakeApplications::frontmost() {
    const MutexLock lock(applicationsMutex);
    if (!front)
        return std::nullopt;
    const auto found = applications.find(*front);
    return found == applications.end() ? Application{*front, {}, {}} : found->second;
}

std::optional<Application> FakeApplications::running(std::int32_t pid) {
    const MutexLock lock(applicationsMutex);
    ++lookUpCounts[pid];
    const auto found = applications.find(pid);
    return found == applications.end() ? std::nullopt : std::optional(found->second);
}

} // namespace mirrolet::platform::desktop::fake
