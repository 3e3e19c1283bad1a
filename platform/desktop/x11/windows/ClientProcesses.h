#pragma once

#include "platform/desktop/x11/server/X11Connection.h"

#include <xcb/res.h>

#include <cstdint>
#include <unordered_map>

namespace mirrolet::platform::desktop::x11 {

/// Finds the process of each client of the server. The PIDs come from the server itself and not from the
/// clients. A client on another machine is not known.
class ClientProcesses {
  public:
    explicit ClientProcesses(X11Connection& connection);

    struct Request {
        xcb_res_query_client_ids_cookie_t cookie{0};
        bool made = false;
    };
    /// Asks about all clients in one request. Sends nothing if the server lacks the X-Resource extension.
    [[nodiscard]] Request request() const;
    /// Waits for the reply and stores the processes that the server named.
    void take(const Request& request);

    /// Returns the number of the client that made a resource. This number is a part of the resource's own
    /// number.
    [[nodiscard]] std::uint32_t clientOf(std::uint32_t resource) const { return resource & ~resourceMask; }
    /// Returns the client's process, or 0 if the server does not know it.
    [[nodiscard]] std::int32_t pidOf(std::uint32_t client) const;

  private:
    X11Connection& connection;
    std::uint32_t resourceMask;
    std::unordered_map<std::uint32_t, std::int32_t> pids;
};

} // namespace mirrolet::platform::desktop::x11
