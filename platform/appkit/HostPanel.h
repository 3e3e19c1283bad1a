#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/WindowList.h"

#include <memory>

namespace mirrolet::platform {

/// The desktop's side of a host's native window through its showings. Without a native window, and for a
/// window that is no panel, there is none: then every call does nothing. Main thread.
class HostPanel {
  public:
    /// After the native window was made.
    void open(desktop::WindowNumber number, desktop::PanelStacking stacking, int level,
              const desktop::PanelShadow& shadow);
    /// Before the native window goes.
    void close() { panel.reset(); }
    [[nodiscard]] bool isOpen() const { return panel != nullptr; }

    void setLevel(int level);
    void setCorners(desktop::PixelSize size, double radius);
    void raise();

    void willShow();
    /// The native window was drawn for the first time since willShow(), so the server has mapped it. True if
    /// that was news.
    bool shown();
    void willHide();
    void didHide();

    /// Now, or as soon as the window is shown.
    void takeFocus();
    void returnFocus();

  private:
    std::unique_ptr<desktop::PanelWindow> panel;
    bool awaitsShowing = false;
    bool focusWanted = false;
};

} // namespace mirrolet::platform
