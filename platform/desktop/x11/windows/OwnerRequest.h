#pragma once

#include "platform/desktop/applications/ApplicationRegistry.h"
#include "platform/desktop/x11/server/Property.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/windows/ClientProcesses.h"

#include <optional>
#include <string_view>

namespace mirrolet::platform::desktop::x11 {

/// Asks for what tells whose a window is, without waiting. take() must follow once.
class OwnerRequest {
  public:
    /// Asks for the client's own word on its process too, unless the server is known to know better.
    OwnerRequest(X11Connection& connection, xcb_window_t window, bool askForPid);
    /// Waits for the replies. A window that died gives an owner of which nothing is known.
    WindowOwner take(const ClientProcesses& clients);

  private:
    [[nodiscard]] std::int32_t takeClaimedPid();

    X11Connection& connection;
    xcb_window_t window;
    xcb_get_property_cookie_t wmClass;
    xcb_get_property_cookie_t gtkApplicationId;
    struct Claim {
        xcb_get_property_cookie_t pid;
        xcb_get_property_cookie_t machine;
    };
    std::optional<Claim> claim;
};

/// Whether a client machine's name is this machine's; either may come without its domain. Pure.
bool isSameMachine(std::string_view one, std::string_view other);

} // namespace mirrolet::platform::desktop::x11
