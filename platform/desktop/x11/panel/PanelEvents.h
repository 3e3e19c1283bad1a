#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <utility>

namespace mirrolet::platform::desktop::x11 {

/// The events of one panel, whose native window Qt made. Selects them as long as this exists, for all parts
/// of the panel.
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
