#include "platform/desktop/x11/windows/OwnerRequest.h"

#include "platform/desktop/x11/server/Property.h"
#include "platform/desktop/x11/windows/WindowDescription.h"

#include <array>
#include <string>
#include <unistd.h>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr std::uint32_t mostBytesOfName = 1024;

std::string thisMachine() {
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? std::string(name.data()) : std::string();
}

} // namespace

bool isSameMachine(std::string_view one, std::string_view other) {
    const auto host = [](std::string_view name) { return name.substr(0, name.find('.')); };
    const bool bothWhole =
        one.find('.') != std::string_view::npos && other.find('.') != std::string_view::npos;
    if (one.empty() || other.empty())
        return false;
    return bothWhole ? one == other : host(one) == host(other);
}

OwnerRequest::OwnerRequest(X11Connection& connection, xcb_window_t window, bool askForPid)
    : connection(connection), window(window) {
    const auto& atoms = connection.atoms();
    wmClass = requestProperty(connection, window, XCB_ATOM_WM_CLASS, mostBytesOfName);
    gtkApplicationId = requestProperty(connection, window, atoms._GTK_APPLICATION_ID, mostBytesOfName);
    if (askForPid)
        claim = {requestProperty(connection, window, atoms._NET_WM_PID, 8),
                 requestProperty(connection, window, XCB_ATOM_WM_CLIENT_MACHINE, mostBytesOfName)};
}

WindowOwner OwnerRequest::take(const ClientProcesses& clients) {
    const auto classReply = takeProperty(connection, wmClass);
    const auto gtkReply = takeProperty(connection, gtkApplicationId);
    WindowOwner owner;
    owner.window = window;
    owner.client = clients.clientOf(window);
    owner.windowClass = windowClass(classReply, gtkReply, connection.atoms());
    const auto claimed = takeClaimedPid();
    owner.pid = clients.pidOf(owner.client);
    if (owner.pid == 0)
        owner.pid = claimed;
    return owner;
}

std::int32_t OwnerRequest::takeClaimedPid() {
    if (!claim)
        return 0;
    const auto pid = takeProperty(connection, claim->pid);
    const auto machine = takeProperty(connection, claim->machine);
    static const std::string here = thisMachine();
    if (!isSameMachine(plainText(machine, connection.atoms()), here))
        return 0;
    const auto number = claimedPid(pid);
    return ProcFolder().startTime(number) ? number : 0;
}

} // namespace mirrolet::platform::desktop::x11
