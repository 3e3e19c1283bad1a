#include "platform/desktop/x11/windows/ClientProcesses.h"

#include <limits>

namespace mirrolet::platform::desktop::x11 {

ClientProcesses::ClientProcesses(X11Connection& connection)
    : connection(connection), resourceMask(xcb_get_setup(connection.xcb())->resource_id_mask) {}

ClientProcesses::Request ClientProcesses::request() const {
    if (!connection.extensions().xres)
        return {};
    // Asks about all clients at once, because clients are far fewer than windows and no window has to be
    // known first.
    const xcb_res_client_id_spec_t all{XCB_NONE, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    return {xcb_res_query_client_ids(connection.xcb(), 1, &all), true};
}

void ClientProcesses::take(const Request& request) {
    if (!request.made)
        return;
    const auto reply = connection.reply<xcb_res_query_client_ids_reply>(request.cookie);
    if (!reply)
        return;
    for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem > 0;
         xcb_res_client_id_value_next(&ids)) {
        const bool isPid = (ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0;
        if (!isPid || xcb_res_client_id_value_value_length(ids.data) < 1)
            continue;
        const auto pid = *xcb_res_client_id_value_value(ids.data);
        // The server gives 0 for a client of another PID namespace.
        if (pid > 0 && pid <= static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max()))
            pids[clientOf(ids.data->spec.client)] = static_cast<std::int32_t>(pid);
    }
}

std::int32_t ClientProcesses::pidOf(std::uint32_t client) const {
    const auto found = pids.find(client);
    return found == pids.end() ? 0 : found->second;
}

} // namespace mirrolet::platform::desktop::x11
