#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/WindowList.h"

#include <memory>

namespace mirrolet::platform {

/// The desktop::PanelWindow of a host's native window. There is none before open(), after close(), and for a
/// window that is no panel. Every other call then does nothing. Main thread.
class HostPanel {
  public:
    /// Makes the desktop's panel. Call this after the native window was made.
    void open(desktop::WindowNumber number, desktop::PanelStacking stacking, int level,
              const desktop::PanelShadow& shadow);
    /// Destroys the desktop's panel. Call this before the native window is destroyed.
    void close() { panel.reset(); }
    [[nodiscard]] bool isOpen() const { return panel != nullptr; }

    void setLevel(int level);
    void setCorners(desktop::PixelSize size, double radius);
    void raise();

    void willShow();
    /// Notes that the server has mapped the native window. Call this when the native window is drawn. Returns
    /// true for the first call since willShow().
    bool shown();
    void willHide();
    void didHide();

    /// Takes the focus now, or as soon as a window that is about to be shown is shown.
    void takeFocus();
    void returnFocus();

  private:
    std::unique_ptr<desktop::PanelWindow> panel;
    bool awaitsShowing = false;
    bool focusWanted = false;
};

} // namespace mirrolet::platform
