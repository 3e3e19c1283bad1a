#include "platform/appkit/NSWorkspace.h"

#include "platform/desktop/Desktop.h"

#include <utility>

namespace mirrolet::platform {

NSWorkspace& NSWorkspace::shared() {
    static NSWorkspace workspace;
    return workspace;
}

std::optional<NSRunningApplication> NSWorkspace::frontmostApplication() const {
    auto front = desktop::Desktop::current().applications().frontmost();
    if (!front)
        return std::nullopt;
    return NSRunningApplication(front->pid, std::move(front->identifier), std::move(front->name));
}

} // namespace mirrolet::platform
