#pragma once

#include "platform/appkit/NSImage.h"
#include "platform/appkit/NSRunningApplication.h"
#include "platform/foundation/URL.h"

#include <memory>
#include <optional>
#include <string>

namespace mirrolet::platform {

/// Finds applications of the desktop: the frontmost one, their icons, and the one that opens a link.
class NSWorkspace {
  public:
    static NSWorkspace& shared();

    /// Returns the application that has the focus. While one of this program's panels has the focus, returns
    /// the application that had the focus before. Any thread.
    [[nodiscard]] std::optional<NSRunningApplication> frontmostApplication() const;

    /// Opens a link with the desktop's application for such links. Returns false if there is no such
    /// application. A failure that comes later is not reported here, because another program shows it to the
    /// user. Main thread.
    bool open(const URL& link) const;
    /// Returns the icon of the application at a path in one of the folders of ApplicationFolders. For any
    /// other path, returns the icon of a plain application. Any thread.
    [[nodiscard]] std::shared_ptr<NSImage> iconForFile(const std::string& path) const;

  private:
    NSWorkspace() = default;
};

} // namespace mirrolet::platform
