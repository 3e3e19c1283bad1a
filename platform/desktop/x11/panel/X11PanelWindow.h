#pragma once

#include "platform/desktop/PanelWindow.h"
#include "platform/desktop/WindowList.h"
#include "platform/desktop/x11/panel/CornerMask.h"
#include "platform/desktop/x11/panel/PanelEvents.h"
#include "platform/desktop/x11/panel/PanelFocus.h"
#include "platform/desktop/x11/panel/PanelProperties.h"
#include "platform/desktop/x11/panel/WindowShadow.h"
#include "platform/desktop/x11/panel/WmStateWaiter.h"
#include "platform/desktop/x11/server/X11Connection.h"

#include <atomic>

namespace mirrolet::platform::desktop::x11 {

class CompositingManager;
class PreviousFocus;
class PanelStack;

/// One panel. A floating one has to be an override-redirect window: a managed one stays below other programs'
/// full-screen windows under most window managers.
class X11PanelWindow final : public PanelWindow {
  public:
    X11PanelWindow(X11Connection& connection, PanelStack& stack, CompositingManager& compositingManager,
                   PreviousFocus& loan, WindowNumber window, PanelStacking stacking);
    ~X11PanelWindow() override;
    X11PanelWindow(const X11PanelWindow&) = delete;
    X11PanelWindow& operator=(const X11PanelWindow&) = delete;

    void willShow() override;
    void didShow() override;
    void willHide() override;
    void didHide() override;
    void setLevel(int newLevel) override;
    void takeKeyboard() override { keyboard.take(); }
    void returnKeyboard() override { keyboard.giveBack(); }
    void setCorners(PixelSize size, double radius) override;
    void setShadow(const PanelShadow& newShadow) override;

  private:
    void followWindowManager();

    X11Connection& connection;
    PanelStack& stack;
    xcb_window_t window;
    PanelStacking stacking;
    int level = 0;
    std::atomic<bool> shown = false; ///< Or about to be.

    PanelEvents events;
    PanelProperties properties;
    WmStateWaiter managerTurn;
    PanelFocus keyboard;
    CornerMask corners;
    WindowShadow shadow;
    X11Connection::Subscription mapSubscription;
    X11Connection::Subscription propertySubscription;
};

} // namespace mirrolet::platform::desktop::x11
