#include "tests/desktop/harness/CallWindow.h"

#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/XDisplay.h"

#include <algorithm>
#include <csignal>

namespace mirrolet::harness {

namespace {

constexpr std::string_view announcement = "window ";

std::vector<std::string> commandFor(const CallWindow::Options& options) {
    std::vector<std::string> command{CALL_WINDOW_PROGRAM};
    const auto add = [&](const char* name, const std::string& value) {
        if (!value.empty())
            command.insert(command.end(), {name, value});
    };
    const auto& [x, y, width, height] = options.place;
    add("--geometry", std::to_string(width) + "x" + std::to_string(height) + "+" + std::to_string(x) + "+" +
                          std::to_string(y));
    add("--title", options.title);
    add("--class", options.wmClass);
    add("--instance", options.wmInstance);
    add("--rate", std::to_string(options.rate));
    add("--border", std::to_string(options.border));
    add("--alpha", std::to_string(options.alpha));
    add("--colour", options.colour);
    add("--type", options.type);
    add("--frame-extents", options.frameExtents);
    for (const std::string& state : options.states)
        add("--state", state);
    if (options.overrideRedirect)
        command.emplace_back("--override-redirect");
    return command;
}

} // namespace

CallWindow::CallWindow(const XDisplay& server) : CallWindow(server, Options{}) {}

CallWindow::CallWindow(const XDisplay& server, const Options& options) {
    const auto log = sandbox.folder() / "call-window.log";
    process = std::make_unique<ChildProcess>(
        ChildProcess::Options{.command = commandFor(options),
                              .environment = server.with(sandbox.environment()),
                              .log = log,
                              .pipeInput = true,
                              .pipeOutput = true});
    waitUntil([this] { return !process->lines().empty() || !process->running(); });
    if (process->lines().empty() || !process->lines().front().starts_with(announcement))
        throw HarnessError("the call window did not start: " + Sandbox::read(log));
    number = static_cast<xcb_window_t>(std::stoul(process->lines().front().substr(announcement.size())));
    XClient client(server);
    const WindowFacts facts(client);
    require("the call window is on the screen", [&] { return facts.viewable(number); });
}

std::vector<std::string> CallWindow::keys() const {
    std::vector<std::string> found;
    // Calls lines() once, because a second call may append to the vector and so invalidate iterators.
    const auto& lines = process->lines();
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
                 [](const std::string& line) { return line.starts_with("key "); });
    return found;
}

void CallWindow::kill() {
    process->signal(SIGKILL);
    process->waitForExit();
}

} // namespace mirrolet::harness
