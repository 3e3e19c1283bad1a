#pragma once

#include "platform/desktop/x11/server/Property.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/windows/OwnerRequest.h"
#include "platform/desktop/x11/windows/WindowDescription.h"

#include <optional>

namespace mirrolet::platform::desktop::x11 {

/// Asks for everything that the window list needs to know about a window. The constructor sends the requests
/// without waiting. take() waits for the replies and must be called exactly once.
class WindowRequest {
  public:
    struct Options {
        bool wmState = false;
        bool workspace = false;
        bool claimedPid = false;
    };
    struct Answer {
        WindowDescription description;
        WindowOwner owner;
    };

    WindowRequest(X11Connection& connection, xcb_window_t window, const Options& options);
    /// Waits for every reply, even if the first one says that the window is gone. Returns none for a window
    /// that is gone, a dock or a desktop window.
    std::optional<Answer> take(const ClientProcesses& clients);

  private:
    [[nodiscard]] xcb_get_property_cookie_t ask(xcb_atom_t property, std::uint32_t mostBytes) const;
    [[nodiscard]] PropertyReply takeIfAsked(const std::optional<xcb_get_property_cookie_t>& cookie) const;
    std::optional<PixelRect> takeBounds();
    std::optional<WindowDescription> takeDescription();

    X11Connection& connection;
    xcb_window_t window;
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t position;
    xcb_get_property_cookie_t netName, name, state, types, frameExtents;
    std::optional<xcb_get_property_cookie_t> wmState, workspace;
    OwnerRequest owner;
};

} // namespace mirrolet::platform::desktop::x11
