#pragma once

#include "platform/desktop/x11/panel/PanelOrder.h"
#include "platform/desktop/x11/panel/RaiseLimit.h"
#include "platform/desktop/x11/panel/SiblingsBelow.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/foundation/Mutex.h"

#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Keeps this process's floating panels above every application's windows, full-screen ones too, and below
/// menus and tooltips. The panels are override-redirect windows, and no window manager does this for such
/// windows. Watches the stacking only while a panel is shown, and works on the connection's thread.
class PanelStack {
  public:
    explicit PanelStack(X11Connection& connection);
    ~PanelStack();
    PanelStack(const PanelStack&) = delete;
    PanelStack& operator=(const PanelStack&) = delete;

    /// Starts to keep a panel above other windows, in front of the other panels of its level. May be called
    /// on any thread.
    void show(xcb_window_t panel, int level);
    void hide(xcb_window_t panel);
    /// Changes a panel's level. Does nothing for a panel that is not shown.
    void setLevel(xcb_window_t panel, int level);
    /// Sets the shadow window that belongs right below a panel from now on. XCB_WINDOW_NONE means no shadow.
    /// May be called on any thread.
    void setShadow(xcb_window_t panel, xcb_window_t shadow);

  private:
    void requestCheck() MIRROLET_EXCLUDES(panelsMutex);
    void configured(const xcb_configure_notify_event_t& event);
    void forget(xcb_window_t topLevel);
    void checkRequested();
    void check(const PanelOrder& shown);
    bool carryOut(const PanelOrder::Move& move);

    X11Connection& connection;

    Mutex panelsMutex;
    PanelOrder panels MIRROLET_GUARDED_BY(panelsMutex);
    bool checkPending MIRROLET_GUARDED_BY(panelsMutex) = false;

    // Only the connection's thread uses these two members.
    SiblingsBelow siblings;
    RaiseLimit limit;

    std::vector<X11Connection::Subscription> subscriptions;
};

} // namespace mirrolet::platform::desktop::x11
