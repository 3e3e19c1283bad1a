#pragma once

#include "platform/desktop/Pixels.h"

#include <cstdint>
#include <memory>

namespace mirrolet::platform::desktop {

/// How a panel's native window stands among the others.
enum class PanelStacking {
    amongNormal, ///< Managed by the window manager: raised and lowered like any window.
    floating,    ///< Above everything, full-screen windows too; the window manager has no part in it.
};

/// A soft black shadow around a panel and a little below it. Lengths in device pixels; an opacity of 0 is
/// none.
struct PanelShadow {
    double opacity = 0;
    double blur = 0;   ///< Twice the standard deviation.
    double offset = 0; ///< Downwards.
    friend bool operator==(const PanelShadow&, const PanelShadow&) = default;
};

/// The desktop's side of one panel: stacking, all desktops, no task list, the keyboard, the corners. Made
/// after the native window exists and before it is first shown; destroyed before the native window is. Main
/// thread only.
class PanelWindow {
  public:
    virtual ~PanelWindow() = default;
    /// Just before the native window is mapped: properties that a window manager reads once. Waits, at most
    /// half a second, for the window manager to have let go of it after the last hiding; the server must have
    /// seen that.
    virtual void willShow() = 0;
    /// Just after it was mapped: requests that a window manager takes only then. Floating: to the front of
    /// its level, and kept above every other application's windows but menus and tooltips until didHide().
    virtual void didShow() = 0;
    /// Just before it is unmapped: waits in the same way for the window manager to have shown it.
    virtual void willHide() = 0;
    virtual void didHide() = 0;
    /// Among panels of this process, the higher level is in front.
    virtual void setLevel(int level) = 0;
    /// Gives this window the keyboard, once, and remembers who had it. A window that the user then chooses
    /// keeps it.
    virtual void takeKeyboard() = 0;
    /// If this window still has the keyboard, gives it back to the window that had it.
    virtual void returnKeyboard() = 0;
    /// Size and corner radius in device pixels: where no compositing manager runs, the corners are cut by
    /// shape.
    virtual void setCorners(PixelSize size, double radius) = 0;
    /// Floating panels only, where a compositing manager runs. None at first.
    virtual void setShadow(const PanelShadow& shadow) = 0;
};

} // namespace mirrolet::platform::desktop
