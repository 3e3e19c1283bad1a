#pragma once

#include "platform/desktop/x11/panel/PanelOrder.h"
#include "platform/desktop/x11/panel/RaiseLimit.h"
#include "platform/desktop/x11/panel/SiblingsBelow.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/foundation/Mutex.h"

#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Keeps this process's floating panels above every application's windows, full-screen ones too, and below
/// menus and tooltips. No window manager does that for override-redirect windows, which the panels are.
/// Watches the stacking only while a panel is shown, and works on the connection's thread.
class PanelStack {
  public:
    explicit PanelStack(X11Connection& connection);
    ~PanelStack();
    PanelStack(const PanelStack&) = delete;
    PanelStack& operator=(const PanelStack&) = delete;

    /// Puts a panel in front of the others of its level. May be called on any thread.
    void show(xcb_window_t panel, int level);
    void hide(xcb_window_t panel);
    /// Does nothing for a panel that is not shown.
    void setLevel(xcb_window_t panel, int level);
    /// Sets the window that belongs right below a panel from now on; XCB_WINDOW_NONE for none. May be called
    /// on any thread.
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

    // Used by the connection's thread only.
    SiblingsBelow siblings;
    RaiseLimit limit;

    std::vector<X11Connection::Subscription> subscriptions;
};

} // namespace mirrolet::platform::desktop::x11
