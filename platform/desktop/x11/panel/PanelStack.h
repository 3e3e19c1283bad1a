#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Keeps this process's floating panels above every application's windows, full-screen ones too, and below
/// menus and tooltips: no window manager does that for all of them. The panels are override-redirect children
/// of the root window. Watches the stacking only while a panel is shown, and works on the connection's
/// thread.
class PanelStack {
  public:
    explicit PanelStack(X11Connection& connection);
    ~PanelStack();
    PanelStack(const PanelStack&) = delete;
    PanelStack& operator=(const PanelStack&) = delete;

    /// Puts a panel in front of the others of its level. Any thread.
    void show(xcb_window_t panel, int level);
    void hide(xcb_window_t panel);
    /// Without effect on a panel that is not shown.
    void setLevel(xcb_window_t panel, int level);
    /// A window that belongs right below a panel, from now on; XCB_WINDOW_NONE: none any more. Any thread.
    void setShadow(xcb_window_t panel, xcb_window_t shadow);

  private:
    struct Panel {
        xcb_window_t window;
        int level;
    };
    using Clock = std::chrono::steady_clock;
    /// How often we were raised above one window within the current second.
    struct Contest {
        Clock::time_point began;
        int raises = 0;
    };

    void insert(Panel panel);
    void requestCheck();
    void configured(const xcb_configure_notify_event_t& event);
    bool noteBelow(xcb_window_t topLevel, xcb_window_t sibling);
    void forget(xcb_window_t topLevel);
    void checkRequested();
    void check(const std::vector<Panel>& shown);
    [[nodiscard]] std::optional<xcb_window_t> topmostOpponent(const std::vector<xcb_window_t>& above);
    bool mayRaiseAbove(xcb_window_t opponent);
    void arrange(const std::vector<Panel>& shown, std::vector<xcb_window_t> order,
                 std::optional<xcb_window_t> opponent);
    bool placeAbove(xcb_window_t panel, xcb_window_t sibling);
    void placeBelow(xcb_window_t shadow, xcb_window_t panel) const;
    void arrangeShadows(const std::vector<Panel>& shown, const std::vector<xcb_window_t>& order);

    X11Connection& connection;

    std::mutex lock;           ///< Guards the panels, their shadows and whether a check is on its way.
    std::vector<Panel> panels; ///< The shown ones, bottom to top.
    std::map<xcb_window_t, xcb_window_t> shadows; ///< Of each panel that has one.
    bool checkPending = false;

    // Of the connection's thread only.
    std::map<xcb_window_t, xcb_window_t> siblingBelow; ///< As last reported, for each top level.
    std::map<xcb_window_t, Contest> contests;

    std::vector<X11Connection::Subscription> subscriptions;
};

} // namespace mirrolet::platform::desktop::x11
