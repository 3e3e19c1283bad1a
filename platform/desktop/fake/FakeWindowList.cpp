#include "platform/desktop/fake/FakeWindowList.h"

#include <utility>

namespace mirrolet::platform::desktop::fake {

void FakeWindowList::setWindows(std::optional<std::vector<WindowRow>> windows) {
    const std::lock_guard lock(mutex);
    rows = std::move(windows);
}

int FakeWindowList::reads() const {
    const std::lock_guard lock(mutex);
    return readCount;
}

std::optional<std::vector<WindowRow>> FakeWindowList::onScreenWindows() {
    const std::lock_guard lock(mutex);
    ++readCount;
    return rows;
}

} // namespace mirrolet::platform::desktop::fake
