#pragma once

#include "platform/desktop/applications/ApplicationRegistry.h"
#include "platform/desktop/x11/server/Property.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/windows/ClientProcesses.h"

#include <optional>
#include <string_view>

namespace mirrolet::platform::desktop::x11 {

/// Asks which client, process and class a window has. The constructor sends the requests without waiting.
/// take() waits for the replies and must be called exactly once.
class OwnerRequest {
  public:
    /// If `askForPid` is true, also asks for the PID that the client itself claims. The caller needs this if
    /// the server does not know the client's process.
    OwnerRequest(X11Connection& connection, xcb_window_t window, bool askForPid);
    /// Waits for the replies and returns the owner. The owner of a window that is gone has neither a class
    /// nor a claimed process.
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

/// Returns whether two host names belong to the same machine. Either name may lack the domain.
bool isSameMachine(std::string_view one, std::string_view other);

} // namespace mirrolet::platform::desktop::x11
