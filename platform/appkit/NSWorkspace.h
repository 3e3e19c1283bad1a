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

    /// The application that has the keyboard, this program's panels aside. Any thread.
    [[nodiscard]] std::optional<NSRunningApplication> frontmostApplication() const;

    /// Opens a link with what the desktop has for it. False, and at once, if nothing takes such links; what
    /// comes of it otherwise is the opener's business. Main thread.
    bool open(const URL& link) const;
    /// The icon of an application of one of the application folders; the plain one for anything else. Any
    /// thread.
    [[nodiscard]] std::shared_ptr<NSImage> iconForFile(const std::string& path) const;

  private:
    NSWorkspace() = default;
};

} // namespace mirrolet::platform
