#include "tests/desktop/harness/XClient.h"

#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/XDisplay.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace mirrolet::harness {

void FreeReply::operator()(void* reply) const {
    std::free(reply);
}

XClient::XClient(const XDisplay& server) : XClient(server.display()) {}

XClient::XClient(const std::string& server) : name(server), connection(xcb_connect(server.c_str(), nullptr)) {
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        throw HarnessError("cannot connect to display " + name);
    }
    defaultScreen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
}

XClient::~XClient() {
    xcb_disconnect(connection);
}

xcb_atom_t XClient::atom(const std::string& wanted) {
    const auto known = atoms.find(wanted);
    if (known != atoms.end())
        return known->second;
    const auto cookie =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(wanted.size()), wanted.c_str());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? atoms[wanted] = reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

std::string XClient::nameOf(xcb_atom_t atom) const {
    const Reply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(connection, xcb_get_atom_name(connection, atom), nullptr));
    return reply ? std::string(xcb_get_atom_name_name(reply.get()),
                               static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get())))
                 : std::string();
}

void XClient::sync() {
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

void XClient::sendToRoot(xcb_window_t window, const std::string& type,
                         const std::vector<std::uint32_t>& data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(type);
    std::copy_n(data.begin(), std::min(data.size(), std::size(event.data.data32)),
                std::begin(event.data.data32));
    const auto mask = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_send_event(connection, 0, root(), mask, reinterpret_cast<const char*>(&event));
    sync();
}

} // namespace mirrolet::harness
