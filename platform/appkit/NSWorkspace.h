#pragma once

#include "platform/appkit/NSImage.h"
#include "platform/appkit/NSRunningApplication.h"
#include "platform/foundation/URL.h"

#include <memory>
#include <optional>
#include <string>

namespace mirrolet::platform {

/// The desktop's applications: the one in front, their icons, and the one that opens a link.
class NSWorkspace {
  public:
    static NSWorkspace& shared();

    /// Returns the application that has the focus. This program's panels do not count. Any thread.
    [[nodiscard]] std::optional<NSRunningApplication> frontmostApplication() const;

    /// Opens a link with the desktop's application for such links. Returns false at once if there is no such
    /// application. The opener reports later failures itself. Main thread.
    bool open(const URL& link) const;
    /// Returns the icon of an application in one of the application folders. For any other path, returns the
    /// icon of a plain application. Any thread.
    [[nodiscard]] std::shared_ptr<NSImage> iconForFile(const std::string& path) const;

  private:
    NSWorkspace() = default;
};

} // namespace mirrolet::platform
