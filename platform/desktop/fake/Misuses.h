#pragma once

#include "platform/foundation/Mutex.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop::fake {

/// The calls that the real desktop would not allow. Shared by the parts of one fake. Any thread.
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
