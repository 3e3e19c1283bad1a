#include "tests/desktop/harness/plasma/PipeWire.h"

#include "tests/desktop/harness/HarnessError.h"

#include <csignal>

namespace mirrolet::harness {

PipeWire::PipeWire(const Environment& environment, SessionManager manager)
    : environment(environment), manager(manager) {
    requireProgram("pipewire", "pipewire-bin");
    requireProgram("wireplumber", "wireplumber");
    start();
}

void PipeWire::start() {
    const std::filesystem::path socket =
        std::filesystem::path(environment.at("XDG_RUNTIME_DIR")) / "pipewire-0";
    std::filesystem::remove(socket);
    const auto log = sandbox.folder() / "pipewire.log";
    process = std::make_unique<ChildProcess>(
        ChildProcess::Options{.command = {"pipewire"}, .environment = environment, .log = log});
    waitUntil([&] { return std::filesystem::exists(socket) || !process->running(); });
    if (!process->running())
        throw HarnessError("PipeWire did not start: " + Sandbox::read(log));
    if (manager == SessionManager::wirePlumber)
        managerProcess = std::make_unique<ChildProcess>(
            ChildProcess::Options{.command = {"wireplumber"}, .environment = environment, .log = log});
}

void PipeWire::kill() {
    for (const auto& each : {managerProcess.get(), process.get()}) {
        if (each == nullptr)
            continue;
        each->signal(SIGKILL);
        each->waitForExit();
    }
}

void PipeWire::restart() {
    kill();
    start();
}

} // namespace mirrolet::harness
