#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/WindowList.h"

#include <memory>

namespace mirrolet::platform {

/// Owns the desktop::PanelWindow of a native window. The PanelWindow exists from open() to close(). While
/// there is none, the other functions do nothing. A window with a title bar never has a PanelWindow. Main
/// thread.
class HostPanel {
  public:
    /// Makes the desktop::PanelWindow. Call this after the native window was made.
    void open(desktop::WindowNumber number, desktop::PanelStacking stacking, int level,
              const desktop::PanelShadow& shadow);
    /// Destroys the desktop::PanelWindow. Call this before the native window is destroyed.
    void close() { panel.reset(); }
    [[nodiscard]] bool isOpen() const { return panel != nullptr; }

    void setLevel(int level);
    void setCorners(desktop::PixelSize size, double radius);
    void raise();

    void willShow();
    /// Tells the panel that the native window is on screen. Call this each time that the native window is
    /// drawn. Only the first call after willShow() has an effect, and only that call returns true.
    bool shown();
    void willHide();
    void didHide();

    /// Takes the focus now, or in the next shown() if willShow() was called before.
    void takeFocus();
    void returnFocus();

  private:
    std::unique_ptr<desktop::PanelWindow> panel;
    bool awaitsShowing = false;
    bool focusWanted = false;
};

} // namespace mirrolet::platform
