#include "tests/desktop/harness/plasma/NativeWindow.h"

#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/plasma/PlasmaSession.h"

#include <algorithm>
#include <csignal>

namespace mirrolet::harness {

namespace {

std::vector<std::string> commandOf(const NativeWindow::Options& options) {
    std::vector<std::string> command{NATIVE_WINDOW_PROGRAM,
                                     "--title",
                                     options.title,
                                     "--app-id",
                                     options.applicationId,
                                     "--colours",
                                     options.colours,
                                     "--width",
                                     std::to_string(options.width),
                                     "--height",
                                     std::to_string(options.height),
                                     "--rate",
                                     std::to_string(options.rate)};
    if (!options.decorated)
        command.emplace_back("--no-decoration");
    if (options.fullScreen)
        command.emplace_back("--full-screen");
    return command;
}

} // namespace

NativeWindow::NativeWindow(const PlasmaSession& session) : NativeWindow(session, Options{}) {}

NativeWindow::NativeWindow(const PlasmaSession& session, const Options& options) {
    Environment environment = session.with(sandbox.environment());
    for (const auto& [name, value] : options.environment)
        environment[name] = value;
    const auto log = sandbox.folder() / "native-window.log";
    process = std::make_unique<ChildProcess>(ChildProcess::Options{.command = commandOf(options),
                                                                   .environment = environment,
                                                                   .log = log,
                                                                   .pipeInput = true,
                                                                   .pipeOutput = true});
    waitUntil([this] { return !linesWith("shown").empty() || !process->running(); });
    if (linesWith("shown").empty())
        throw HarnessError("the native window did not start: " + Sandbox::read(log));
}

std::vector<std::string> NativeWindow::keys() const {
    return linesWith("key ");
}

bool NativeWindow::hasFocus() const {
    const auto changes = linesWith("focus ");
    return !changes.empty() && changes.back() == "focus in";
}

std::vector<std::string> NativeWindow::linesWith(const std::string& start) const {
    std::vector<std::string> found;
    std::ranges::copy_if(process->lines(), std::back_inserter(found),
                         [&](const std::string& line) { return line.starts_with(start); });
    return found;
}

void NativeWindow::kill() const {
    process->signal(SIGKILL);
    process->waitForExit();
}

} // namespace mirrolet::harness
