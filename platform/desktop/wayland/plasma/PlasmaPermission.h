#pragma once

namespace mirrolet::platform::desktop::wayland {

/// Returns whether an installed desktop entry names this program's path and has the line
/// X-KDE-Wayland-Interfaces. KWin shows its windows only to such a program.
bool entryAsksForWindows();

/// Makes Plasma read the desktop entries again, and waits for it, at most five seconds. Plasma by itself does
/// so a moment after an installation or at the next login.
void refreshDesktopEntries();

} // namespace mirrolet::platform::desktop::wayland
