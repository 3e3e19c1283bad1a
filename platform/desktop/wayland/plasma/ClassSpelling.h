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
    /// `x11Windows` is the list of XWayland's windows. It is read once for each window.
    explicit ClassSpelling(WindowList& x11Windows) : x11Windows(x11Windows) {}

    /// Returns the window's application ID as the X11 client writes it. The application ID of a native
    /// Wayland window is returned as it is.
    std::string of(const PlasmaWindow& window);
    /// Forgets every window that is not in the list.
    void keepOnly(const std::vector<PlasmaWindow>& onScreen);

  private:
    std::string lookUp(const std::string& applicationId);

    WindowList& x11Windows;
    Mutex spelledMutex;
    std::map<WindowNumber, std::string> spelled MIRROLET_GUARDED_BY(spelledMutex);
};

} // namespace mirrolet::platform::desktop::wayland
