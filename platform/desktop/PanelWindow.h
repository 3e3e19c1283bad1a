#pragma once

#include "platform/desktop/Pixels.h"

#include <cstdint>
#include <memory>

namespace mirrolet::platform::desktop {

/// Where a panel's native window is stacked among the other windows.
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

/// What the desktop has to do for a mirror panel or a prompt: stacking, all desktops, no task list, the
/// focus, the corners. Made after the native window exists and before it is first shown; destroyed before the
/// native window is. Main thread only.
class PanelWindow {
  public:
    virtual ~PanelWindow() = default;
    /// To be called just before the native window is mapped; writes the properties that a window manager
    /// reads once. Waits, at most half a second, until the window manager has done its part of the last
    /// unmap. The server must have that unmap already.
    virtual void willShow() = 0;
    /// To be called just after the native window was mapped, or to bring a mapped one to the front; sends the
    /// requests that a window manager takes only then. A managed window comes in front of the others without
    /// the focus. A floating one comes to the front of its level, and stays above every application's windows
    /// but menus and tooltips until didHide().
    virtual void didShow() = 0;
    /// To be called just before the native window is unmapped. Waits, at most half a second, until the window
    /// manager has done its part of the map.
    virtual void willHide() = 0;
    virtual void didHide() = 0;
    /// Among panels of this process, the higher level is in front.
    virtual void setLevel(int level) = 0;
    /// Gives this window the focus, once, and remembers which window had it before. If the user then chooses
    /// another window, that window keeps the focus.
    virtual void takeFocus() = 0;
    /// If this window still has the focus, gives the focus back to the window that had it before.
    virtual void returnFocus() = 0;
    /// Size and corner radius in device pixels. While no compositing manager runs, the window's shape makes
    /// the corners round.
    virtual void setCorners(PixelSize size, double radius) = 0;
    /// The shadow of a floating panel while a compositing manager runs. None at first.
    virtual void setShadow(const PanelShadow& shadow) = 0;
};

} // namespace mirrolet::platform::desktop
