#include "tests/desktop/harness/XServer.h"

#include "tests/desktop/harness/HarnessError.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace mirrolet::harness {

namespace {

std::vector<std::string> commandFor(const XServer::Options& options, int displayDescriptor) {
    const std::string screen = std::to_string(options.width) + "x" + std::to_string(options.height) + "x" +
                               std::to_string(options.depth);
    std::vector<std::string> command{
        "Xvfb",       "-displayfd", std::to_string(displayDescriptor),
        "-screen",    "0",          screen,
        "-nolisten",  "tcp",        "-noreset",
        "-ac",        "-dpi",       "96",
        "+extension", "DAMAGE",     options.composite ? "+extension" : "-extension",
        "Composite"};
    command.insert(command.end(), options.more.begin(), options.more.end());
    return command;
}

/// Reads the display number from the descriptor. The X server writes the number and a line feed as soon as it
/// accepts connections.
std::string readNumber(int descriptor, ChildProcess& server) {
    fcntl(descriptor, F_SETFL, O_NONBLOCK);
    std::string text;
    waitUntil([&] {
        char byte = 0;
        while (read(descriptor, &byte, 1) == 1)
            text += byte;
        return text.ends_with('\n') || !server.running();
    });
    if (!text.ends_with('\n'))
        return {};
    text.pop_back();
    return text;
}

} // namespace

XServer::XServer() : XServer(Options{}) {}

XServer::XServer(const Options& options) {
    requireProgram("Xvfb", "xvfb");
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        throw HarnessError("no pipe for the X server");
    const auto log = sandbox.folder() / "server.log";
    process = std::make_unique<ChildProcess>(ChildProcess::Options{
        .command = commandFor(options, ends[1]),
        .environment = sandbox.environment(),
        .log = log,
        .keptDescriptor = ends[1],
    });
    close(ends[1]);
    const std::string number = readNumber(ends[0], *process);
    close(ends[0]);
    if (number.empty())
        throw HarnessError("Xvfb did not start: " + Sandbox::read(log));
    name = ":" + number;
}

void XServer::kill() {
    process->signal(SIGKILL);
    process->waitForExit();
}

} // namespace mirrolet::harness
