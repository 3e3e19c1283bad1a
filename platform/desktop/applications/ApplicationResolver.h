#pragma once

#include "platform/desktop/applications/DesktopEntries.h"
#include "platform/desktop/applications/ProcFolder.h"
#include "platform/desktop/applications/WindowOwner.h"

#include <string>

namespace mirrolet::platform::desktop {

/// Returns the desktop entry whose application a window belongs to; nullptr if no entry fits. Pure.
const DesktopEntry* entryOfWindow(const WindowClass& window, const ProcessFacts& process,
                                  const DesktopEntries& entries);

/// Returns the identifier of the Flatpak that a process runs in; empty if the process runs in none. Pure.
std::string flatpakOf(const ProcessFacts& process);

/// A snap and the application in it that a process was started as. Both are empty for any other process.
struct SnapApplication {
    std::string snap;
    std::string application;
};
/// Returns the snap application that a process was started as. Pure.
SnapApplication snapOf(const ProcessFacts& process);

} // namespace mirrolet::platform::desktop
