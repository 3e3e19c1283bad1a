#pragma once

#include "platform/desktop/WindowList.h"
#include "platform/foundation/Mutex.h"

namespace mirrolet::platform::desktop::fake {

/// Gives the windows that a test sets, and counts the reads. May be used by any thread.
class FakeWindowList final : public WindowList {
  public:
    /// Sets the windows, front to back. Pass no value to make the list unreadable.
    void setWindows(std::optional<std::vector<WindowRow>> windows);
    [[nodiscard]] int reads() const;

    std::optional<std::vector<WindowRow>> onScreenWindows() override;

  private:
    mutable Mutex rowsMutex;
    std::optional<std::vector<WindowRow>> rows MIRROLET_GUARDED_BY(rowsMutex) = std::vector<WindowRow>();
    int readCount MIRROLET_GUARDED_BY(rowsMutex) = 0;
};

} // namespace mirrolet::platform::desktop::fake
