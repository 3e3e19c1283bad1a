#include "tests/desktop/harness/SessionBus.h"

#include "tests/desktop/harness/HarnessError.h"

namespace mirrolet::harness {

namespace {

std::string settings(const Sandbox& sandbox, SessionBus::Services services) {
    const std::string folders = services == SessionBus::Services::installed
                                    ? "<servicedir>/usr/share/dbus-1/services</servicedir>"
                                    : "";
    return "<busconfig><type>session</type><listen>unix:tmpdir=" + sandbox.folder().string() + "</listen>" +
           folders +
           "<auth>EXTERNAL</auth><policy context=\"default\"><allow send_destination=\"*\" "
           "eavesdrop=\"true\"/>"
           "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>";
}

} // namespace

SessionBus::SessionBus(Services services, const Environment& more) {
    requireProgram("dbus-daemon", "dbus-daemon");
    const auto file = sandbox.write("bus.conf", settings(sandbox, services));
    Environment environment = sandbox.environment();
    environment.insert(more.begin(), more.end());
    process = std::make_unique<ChildProcess>(
        ChildProcess::Options{.command = {"dbus-daemon", "--config-file=" + file.string(), "--nofork",
                                          "--nopidfile", "--print-address"},
                              .environment = environment,
                              .log = sandbox.folder() / "bus.log",
                              .pipeOutput = true});
    waitUntil([this] { return !process->lines().empty() || !process->running(); });
    if (process->lines().empty())
        throw HarnessError("dbus-daemon did not start: " + Sandbox::read(sandbox.folder() / "bus.log"));
    where = process->lines().front();
}

Environment SessionBus::with(Environment environment) const {
    environment["DBUS_SESSION_BUS_ADDRESS"] = where;
    return environment;
}

} // namespace mirrolet::harness
