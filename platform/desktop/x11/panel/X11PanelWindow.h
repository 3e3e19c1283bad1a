#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/WindowList.h"
#include "platform/desktop/x11/panel/PanelEvents.h"
#include "platform/desktop/x11/panel/PanelFocus.h"
#include "platform/desktop/x11/panel/PanelProperties.h"
#include "platform/desktop/x11/panel/RaiseRequest.h"
#include "platform/desktop/x11/panel/ShapedCorners.h"
#include "platform/desktop/x11/panel/WindowShadow.h"
#include "platform/desktop/x11/panel/WmStateWaiter.h"
#include "platform/desktop/x11/server/X11Connection.h"

#include <atomic>

namespace mirrolet::platform::desktop::x11 {

class CompositingManager;
class PreviousFocus;
class PanelStack;

/// Implements PanelWindow for one mirror panel or prompt. A floating panel has to be an override-redirect
/// window, because most window managers keep a managed window below other programs' full-screen windows.
class X11PanelWindow final : public PanelWindow {
  public:
    X11PanelWindow(X11Connection& connection, PanelStack& stack, CompositingManager& compositingManager,
                   PreviousFocus& previousFocus, WindowNumber window, PanelStacking stacking);
    ~X11PanelWindow() override;
    X11PanelWindow(const X11PanelWindow&) = delete;
    X11PanelWindow& operator=(const X11PanelWindow&) = delete;

    void willShow() override;
    void didShow() override;
    void willHide() override;
    void didHide() override;
    void setLevel(int newLevel) override;
    void takeFocus() override;
    void returnFocus() override;
    void setCorners(PixelSize size, double radius) override;
    void setShadow(const PanelShadow& newShadow) override;

  private:
    void followWindowManager();

    X11Connection& connection;
    PanelStack& stack;
    xcb_window_t window;
    PanelStacking stacking;
    int level = 0;
    std::atomic<bool> shown = false; ///< True from willShow() until didHide().

    PanelEvents events;
    PanelProperties properties;
    RaiseRequest raise;
    WmStateWaiter wmState;
    PanelFocus focus;
    ShapedCorners corners;
    WindowShadow shadow;
    X11Connection::Subscription mapSubscription;
    X11Connection::Subscription propertySubscription;
};

} // namespace mirrolet::platform::desktop::x11
