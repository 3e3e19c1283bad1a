#include "tests/desktop/harness/DesktopServices.h"

#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/XClient.h"
#include "tests/desktop/harness/XServer.h"

namespace mirrolet::harness {

namespace {

bool isOwned(XClient& client, const std::string& selection) {
    const auto cookie = xcb_get_selection_owner(client.xcb(), client.atom(selection));
    const Reply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(client.xcb(), cookie, nullptr));
    return reply && reply->owner != XCB_NONE;
}

std::unique_ptr<ChildProcess> startOwner(const XServer& server, const Sandbox& sandbox,
                                         const std::vector<std::string>& command, const std::string& package,
                                         const std::string& selection) {
    requireProgram(command.front(), package);
    const auto log = sandbox.folder() / "service.log";
    auto process = std::make_unique<ChildProcess>(ChildProcess::Options{
        .command = command, .environment = server.with(sandbox.environment()), .log = log});
    XClient client(server);
    waitUntil([&] { return isOwned(client, selection) || !process->running(); });
    if (!process->running() || !isOwned(client, selection))
        throw HarnessError(command.front() + " did not start: " + Sandbox::read(log));
    return process;
}

/// Debian has trayer up to release 13 and stalonetray in every release.
std::vector<std::string> trayCommand() {
    if (!isInstalled("trayer") && isInstalled("stalonetray"))
        return {"stalonetray", "--geometry", "4x1-0+0", "--icon-size", "24"};
    return {"trayer", "--edge", "top", "--align", "right", "--height", "24", "--widthtype", "request"};
}

} // namespace

TrayHost::TrayHost(const XServer& server)
    : process(startOwner(server, sandbox, trayCommand(), "trayer", "_NET_SYSTEM_TRAY_S0")) {}

Picom::Picom(const XServer& server)
    : process(
          startOwner(server, sandbox,
                     {"picom", "--config", sandbox.write("picom.conf", "backend = \"xrender\";\n").string()},
                     "picom", "_NET_WM_CM_S0")) {}

} // namespace mirrolet::harness
