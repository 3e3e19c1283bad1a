#include "platform/desktop/fake/FakeWindowList.h"

#include <utility>

namespace mirrolet::platform::desktop::fake {

void FakeWindowList::setWindows(std::optional<std::vector<WindowRow>> windows) {
    const MutexLock lock(rowsMutex);
    rows = std::move(windows);
}

int FakeWindowList::reads() const {
    const MutexLock lock(rowsMutex);
    return readCount;
}

std::optional<std::vector<WindowRow>> FakeWindowList::onScreenWindows() {
    const MutexLock lock(rowsMutex);
    ++readCount;
    return rows;
}

} // namespace mirrolet::platform::desktop::fake
