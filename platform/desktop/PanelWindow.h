#pragma once

#include "platform/desktop/Pixels.h"

#include <cstdint>
#include <memory>

namespace mirrolet::platform::desktop {

/// The place of a panel's native window in the stack of windows.
enum class PanelStacking {
    amongNormal, ///< Managed by the window manager, which raises and lowers it like any window.
    floating,    ///< Above all application windows, full-screen ones too. Not managed by the window manager.
};

/// A soft black shadow around a panel and a little below it. Lengths in device pixels. An opacity of 0 means
/// no shadow.
struct PanelShadow {
    double opacity = 0;
    double blur = 0;   ///< Twice the standard deviation.
    double offset = 0; ///< Downwards.
    friend bool operator==(const PanelShadow&, const PanelShadow&) = default;
};

/// Does the desktop's part for a mirror panel or a prompt: stacking, all desktops, no task list, the focus,
/// the corners. To be made after the native window exists and before that window is first shown, and
/// destroyed before that window is. Main thread only.
class PanelWindow {
  public:
    virtual ~PanelWindow() = default;
    /// Writes the properties that a window manager reads once. To be called just before the native window is
    /// mapped. Waits, at most half a second, until the window manager has done its part of the last unmap.
    /// The server must have received that unmap already.
    virtual void willShow() = 0;
    /// Sends the requests that a window manager accepts only just after the map. To be called just after the
    /// native window was mapped, or to bring a mapped window to the front. A managed window comes in front of
    /// the others without the focus. A floating window comes to the front of its level. Until didHide() the
    /// floating window stays above all windows of applications except menus and tooltips.
    virtual void didShow() = 0;
    /// Waits, at most half a second, until the window manager has done its part of the map. To be called just
    /// before the native window is unmapped.
    virtual void willHide() = 0;
    virtual void didHide() = 0;
    /// Sets the level. Among panels of this process, the higher level is in front.
    virtual void setLevel(int level) = 0;
    /// Gives this window the focus, once, and remembers which window had the focus before. If the user then
    /// chooses another window, that window keeps the focus.
    virtual void takeFocus() = 0;
    /// Gives the focus back to the window that had it before, if this window still has the focus.
    virtual void returnFocus() = 0;
    /// Sets the size and corner radius in device pixels. While no compositing manager runs, the corners are
    /// rounded by the window's shape.
    virtual void setCorners(PixelSize size, double radius) = 0;
    /// Sets the shadow that a floating panel has while a compositing manager runs. There is none at first.
    virtual void setShadow(const PanelShadow& shadow) = 0;
};

} // namespace mirrolet::platform::desktop
