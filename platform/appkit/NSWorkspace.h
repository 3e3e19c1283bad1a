#pragma once

#include "platform/appkit/NSImage.h"
#include "platform/appkit/NSRunningApplication.h"
#include "platform/foundation/URL.h"

#include <memory>
#include <optional>
#include <string>

namespace mirrolet::platform {

/// The desktop as the user's place of work.
class NSWorkspace {
  public:
    static NSWorkspace& shared();

    /// The application that has the focus, this program's panels aside. Any thread.
    [[nodiscard]] std::optional<NSRunningApplication> frontmostApplication() const;

    /// Opens a link with the application that the desktop has for such links. False, and at once, if there is
    /// none. Later failures are the opener's to report. Main thread.
    bool open(const URL& link) const;
    /// The icon of an application in one of the application folders. Anything else gets the icon of a plain
    /// application. Any thread.
    [[nodiscard]] std::shared_ptr<NSImage> iconForFile(const std::string& path) const;

  private:
    NSWorkspace() = default;
};

} // namespace mirrolet::platform
