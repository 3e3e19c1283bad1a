#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop::fake {

/// What callers did that the real desktop would not forgive. Shared by the parts of one fake. Any thread.
class Misuses {
  public:
    void add(std::string what) {
        const std::lock_guard lock(mutex);
        list.push_back(std::move(what));
    }
    [[nodiscard]] std::vector<std::string> all() const {
        const std::lock_guard lock(mutex);
        return list;
    }

  private:
    mutable std::mutex mutex;
    std::vector<std::string> list;
};

} // namespace mirrolet::platform::desktop::fake
