#pragma once

#include "platform/foundation/Mutex.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop::fake {

/// Collects descriptions of function calls that a real desktop would not allow. All parts of one FakeDesktop
/// share this object. May be used by any thread.
class Misuses {
  public:
    void add(std::string what) {
        const MutexLock lock(listMutex);
        list.push_back(std::move(what));
    }
    [[nodiscard]] std::vector<std::string> all() const {
        const MutexLock lock(listMutex);
        return list;
    }

  private:
    mutable Mutex listMutex;
    std::vector<std::string> list MIRROLET_GUARDED_BY(listMutex);
};

} // namespace mirrolet::platform::desktop::fake
