#pragma once

#include "platform/appkit/NSRunningApplication.h"

#include <optional>

namespace mirrolet::platform {

/// The desktop as the user's place of work.
class NSWorkspace {
  public:
    static NSWorkspace& shared();

    /// The application that has the keyboard, this program's panels aside. Any thread.
    [[nodiscard]] std::optional<NSRunningApplication> frontmostApplication() const;

  private:
    NSWorkspace() = default;
};

} // namespace mirrolet::platform
