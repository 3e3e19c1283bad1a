#pragma once

#include "platform/desktop/applications/DesktopEntries.h"
#include "platform/desktop/applications/ProcFolder.h"
#include "platform/desktop/applications/WindowOwner.h"

#include <string>

namespace mirrolet::platform::desktop {

/// The desktop entry whose application a window belongs to; nullptr where none fits. Pure.
const DesktopEntry* entryOfWindow(const WindowClass& window, const ProcessFacts& process,
                                  const DesktopEntries& entries);

/// Identifier of the Flatpak that a process runs in; empty for none. Pure, as the next.
std::string flatpakOf(const ProcessFacts& process);

/// The snap and its application that a process was started as; both empty for none.
struct SnapApplication {
    std::string snap;
    std::string application;
};
SnapApplication snapOf(const ProcessFacts& process);

} // namespace mirrolet::platform::desktop
