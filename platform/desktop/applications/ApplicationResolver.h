#pragma once

#include "platform/desktop/applications/DesktopEntries.h"
#include "platform/desktop/applications/ProcFolder.h"
#include "platform/desktop/applications/WindowOwner.h"

#include <string>

namespace mirrolet::platform::desktop {

/// Returns the desktop entry of the application that a window belongs to. Returns nullptr if no entry fits.
const DesktopEntry* entryOfWindow(const WindowClass& window, const ProcessFacts& process,
                                  const DesktopEntries& entries);

/// Returns the identifier of the Flatpak that a process runs in. Returns an empty text for any other process.
std::string flatpakOf(const ProcessFacts& process);

/// Names a snap and one of the applications in it. Both names are empty for a process that does not come from
/// a snap.
struct SnapApplication {
    std::string snap;
    std::string application;
};
/// Returns the snap that a process was started from, and the application in that snap.
SnapApplication snapOf(const ProcessFacts& process);

} // namespace mirrolet::platform::desktop
