#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <utility>

namespace mirrolet::platform::desktop::x11 {

/// Selects the events of one panel for all parts of the panel, as long as this object exists. Qt made the
/// panel's native window.
class PanelEvents {
  public:
    PanelEvents(X11Connection& connection, xcb_window_t panel);
    ~PanelEvents();
    PanelEvents(const PanelEvents&) = delete;
    PanelEvents& operator=(const PanelEvents&) = delete;

    /// Calls the handler with each such event of the panel itself, on the connection's thread.
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
