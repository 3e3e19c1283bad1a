#include "tests/desktop/harness/SessionBus.h"

#include "tests/desktop/harness/HarnessError.h"

namespace mirrolet::harness {

namespace {

constexpr auto settingsFile = "bus.conf";

std::string settings(const std::string& address, SessionBus::Services services) {
    const std::string folders = services == SessionBus::Services::installed
                                    ? "<servicedir>/usr/share/dbus-1/services</servicedir>"
                                    : "";
    return "<busconfig><type>session</type><listen>" + address + "</listen>" + folders +
           "<auth>EXTERNAL</auth><policy context=\"default\"><allow send_destination=\"*\" "
           "eavesdrop=\"true\"/>"
           "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>";
}

} // namespace

SessionBus::SessionBus(Services services, const Environment& more)
    : environment(sandbox.environment()), where("unix:path=" + (sandbox.folder() / "bus").string()) {
    requireProgram("dbus-daemon", "dbus-daemon");
    sandbox.write(settingsFile, settings(where, services));
    environment.insert(more.begin(), more.end());
    start();
}

void SessionBus::start() {
    process = std::make_unique<ChildProcess>(ChildProcess::Options{
        .command = {"dbus-daemon", "--config-file=" + (sandbox.folder() / settingsFile).string(), "--nofork",
                    "--nopidfile", "--print-address"},
        .environment = environment,
        .log = sandbox.folder() / "bus.log",
        .pipeOutput = true});
    waitUntil([this] { return !process->lines().empty() || !process->running(); });
    if (process->lines().empty())
        throw HarnessError("dbus-daemon did not start: " + Sandbox::read(sandbox.folder() / "bus.log"));
}

void SessionBus::restart() {
    kill();
    process->waitForExit();
    start();
}

Environment SessionBus::with(Environment others) const {
    others["DBUS_SESSION_BUS_ADDRESS"] = where;
    return others;
}

} // namespace mirrolet::harness
