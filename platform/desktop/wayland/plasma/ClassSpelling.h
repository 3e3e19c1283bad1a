#pragma once

#include "platform/desktop/WindowList.h"
#include "platform/desktop/wayland/plasma/PlasmaWindow.h"
#include "platform/foundation/Mutex.h"

#include <map>
#include <string>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

/// Finds how the X11 client of a window writes its WM_CLASS class. KWin 5 reports every class in lower case,
/// but the name of an application without a desktop entry is the class as it is written. Any thread.
class ClassSpelling {
  public:
    /// `x11Windows` is the list of XWayland's windows.
    explicit ClassSpelling(WindowList& x11Windows) : x11Windows(x11Windows) {}

    /// Finds the spelling of the windows that are new. Reads the list of XWayland's windows once if there are
    /// such windows, and otherwise not at all.
    void learn(const std::vector<PlasmaWindow>& windows);
    /// Returns the window's application ID as the X11 client writes it. The application ID of a native
    /// Wayland window is returned as it is. The window must have been learned.
    [[nodiscard]] std::string of(const PlasmaWindow& window) const;
    /// Forgets every window that is not in the list.
    void keepOnly(const std::vector<PlasmaWindow>& onScreen);

  private:
    [[nodiscard]] bool isKnown(const PlasmaWindow& window) const MIRROLET_REQUIRES(spelledMutex);

    WindowList& x11Windows;
    mutable Mutex spelledMutex;
    std::map<WindowNumber, std::string> spelled MIRROLET_GUARDED_BY(spelledMutex);
};

} // namespace mirrolet::platform::desktop::wayland
