#pragma once

#include "platform/desktop/Pixels.h"

#include <cstdint>
#include <memory>

namespace mirrolet::platform::desktop {

/// Tells where a panel's native window belongs among the other windows of the screen.
enum class PanelStacking {
    amongNormal, ///< The window manager raises and lowers the window like any other.
    floating,    ///< The backend keeps the window above all application windows, even full-screen ones.
    dialog,      ///< The window manager keeps the window above others and gives it the focus.
};

/// Describes the soft black shadow of a panel. Lengths are in device pixels. An opacity of 0 means no shadow.
struct PanelShadow {
    double opacity = 0;
    double blur = 0;   ///< Twice the standard deviation of the Gaussian blur.
    double offset = 0; ///< How far the shadow is moved down.
    friend bool operator==(const PanelShadow&, const PanelShadow&) = default;
};

/// Makes one native window behave as a mirror panel or a prompt. Handles the window's place in the stacking
/// order, focus, round corners and shadow. The window appears on all workspaces and in no task list. Must be
/// used on the main thread only.
///
/// This object must be made after the native window and before that window is first shown, and must be
/// destroyed before the native window.
///
/// "To map" is X11's word for showing a window, and "to unmap" for hiding one.
class PanelWindow {
  public:
    virtual ~PanelWindow() = default;
    /// Prepares the native window for being mapped. Must be called just before the window is mapped, each
    /// time. If the window was mapped before, the server must have received the request to unmap it. First
    /// waits, for at most half a second, until the window manager has handled that unmapping. Without this
    /// wait, the window manager could mix up that unmapping with the new mapping, and leave the window
    /// hidden. Then writes the properties that a window manager reads only when it maps the window.
    virtual void willShow() = 0;
    /// Brings the native window to the front. Must be called just after the window is mapped, each time,
    /// because a window manager accepts some requests only then. May also be called later while the window is
    /// mapped. A managed window comes in front of the other windows but does not get the focus. A floating
    /// window comes in front of the other panels that have the same level (see setLevel()). Until didHide(),
    /// a floating window stays above all application windows, but below menus and tooltips.
    virtual void didShow() = 0;
    /// Must be called just before the native window is unmapped. Waits, for at most half a second, until the
    /// window manager has handled the last mapping. Without this wait, the window manager could mix up that
    /// mapping with the unmapping, and leave the window shown.
    virtual void willHide() = 0;
    virtual void didHide() = 0;
    /// Sets the level. Among the panels of this process, the one with the higher level is in front.
    virtual void setLevel(int level) = 0;
    /// Gives the panel the focus and remembers which window had the focus before. If the user then chooses
    /// another window, that window keeps the focus.
    virtual void takeFocus() = 0;
    /// If the panel still has the focus, gives the focus back to the window that had it before the panel.
    virtual void returnFocus() = 0;
    /// Sets the size and the corner radius in device pixels. While no compositing manager runs, the backend
    /// rounds the corners by means of the window's shape.
    virtual void setCorners(PixelSize size, double radius) = 0;
    /// Sets the shadow, which a floating panel shows while a compositing manager runs. A panel has no shadow
    /// before the first call.
    virtual void setShadow(const PanelShadow& shadow) = 0;
};

} // namespace mirrolet::platform::desktop
