#pragma once

#include "platform/desktop/Applications.h"
#include "platform/foundation/Mutex.h"

#include <map>

namespace mirrolet::platform::desktop::fake {

/// Knows the applications that a test adds, and counts the look-ups. May be used by any thread.
class FakeApplications final : public Applications {
  public:
    void add(Application application);
    /// Sets the frontmost application. The application need not have been added.
    void setFrontmost(std::optional<std::int32_t> pid);
    /// Returns how often running() was called with this number.
    [[nodiscard]] int lookUps(std::int32_t pid) const;

    std::optional<Application> frontmost() override;
    std::optional<Application> running(std::int32_t pid) override;

  private:
    mutable Mutex applicationsMutex;
    std::map<std::int32_t, Application> applications MIRROLET_GUARDED_BY(applicationsMutex);
    std::optional<std::int32_t> front MIRROLET_GUARDED_BY(applicationsMutex);
    std::map<std::int32_t, int> lookUpCounts MIRROLET_GUARDED_BY(applicationsMutex);
};

} // namespace mirrolet::platform::desktop::fake
