#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <utility>

namespace mirrolet::platform::desktop::x11 {

/// Selects events on a panel's native window as long as this object exists. All classes that handle the same
/// panel share this object, because a connection has only one event selection for each window.
class PanelEvents {
  public:
    PanelEvents(X11Connection& connection, xcb_window_t panel);
    ~PanelEvents();
    PanelEvents(const PanelEvents&) = delete;
    PanelEvents& operator=(const PanelEvents&) = delete;

    /// Calls the handler with each event of this type on the panel's own window, on the connection's thread.
    template <typename Event, typename Handler>
    [[nodiscard]] X11Connection::Subscription subscribe(Handler handler) const {
        return connection.subscribe<Event>(panel, std::move(handler));
    }

  private:
    void select(std::uint32_t mask) const;

    X11Connection& connection;
    const xcb_window_t panel;
};

} // namespace mirrolet::platform::desktop::x11
