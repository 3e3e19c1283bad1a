#include "tests/desktop/harness/Program.h"

#include "tests/desktop/harness/SessionBus.h"
#include "tests/desktop/harness/XDisplay.h"

#include <cmath>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <sstream>

namespace mirrolet::harness {

namespace {

constexpr int smallestPanel = 50;
constexpr auto defaultsPath = "config/mirrolet/defaults.json";

/// Returns the command that starts Mirrolet. The environment variable MIRROLET_UNDER can name a tool and its
/// options, such as valgrind, and the command then runs Mirrolet under that tool.
std::vector<std::string> command() {
    const char* under = std::getenv("MIRROLET_UNDER");
    std::istringstream words(under == nullptr ? "" : under);
    std::vector<std::string> result{std::istream_iterator<std::string>(words), {}};
    result.emplace_back(MIRROLET_PROGRAM);
    return result;
}

double scaleIn(const Environment& environment) {
    const auto found = environment.find("QT_SCALE_FACTOR");
    return found == environment.end() ? 1 : std::stod(found->second);
}

/// Returns whether the window only draws the shadow of a panel. A shadow is a window of its own.
bool isShadow(const WindowFacts& facts, xcb_window_t window) {
    return facts.atomNames(window, "_NET_WM_WINDOW_TYPE") ==
           std::vector<std::string>{"_NET_WM_WINDOW_TYPE_DND"};
}

} // namespace

Program::Program(const XDisplay* server, const SessionBus* bus, const Options& options)
    : sandbox(options.home ? options.home : std::make_shared<Sandbox>()),
      scale(scaleIn(options.environment)) {
    if (!options.defaults.empty())
        sandbox->write(defaultsPath, options.defaults);
    Environment environment = sandbox->environment();
    if (server != nullptr)
        environment = server->with(environment);
    if (bus != nullptr)
        environment = bus->with(environment);
    for (const auto& [name, value] : options.environment)
        environment[name] = value;
    process = std::make_unique<ChildProcess>(ChildProcess::Options{
        .command = command(), .environment = environment, .log = sandbox->folder() / "mirrolet.log"});
}

Program::~Program() {
    process.reset();
    const auto said = log();
    const auto isFault = [&said](const char* words) { return said.find(words) != std::string::npos; };
    if (!isFault("Sanitizer") && !isFault("runtime error: ") && !isFault("X11: unexpected"))
        return;
    std::cerr << said << std::endl;
    std::abort();
}

std::string Program::defaults(const std::string& more) {
    return R"({"pollInterval": 0.1)" + (more.empty() ? "" : ", " + more) + "}";
}

std::filesystem::path Program::defaultsFile() const {
    return sandbox->folder() / defaultsPath;
}

std::string Program::log() const {
    return Sandbox::read(sandbox->folder() / "mirrolet.log");
}

std::vector<xcb_window_t> Program::windows(const WindowFacts& facts) const {
    auto found = facts.windowsOf(process->pid());
    std::erase_if(found, [&](xcb_window_t window) {
        const Box box = facts.box(window);
        return box.width < smallestPanel || box.height < smallestPanel || isShadow(facts, window);
    });
    return found;
}

bool Program::isPrompt(const Box& box) const {
    return box.width == std::lround(promptWidth * scale) && box.height == std::lround(promptHeight * scale);
}

std::optional<xcb_window_t> Program::prompt(const WindowFacts& facts) const {
    for (const xcb_window_t window : windows(facts))
        if (isPrompt(facts.box(window)))
            return window;
    return std::nullopt;
}

xcb_window_t Program::awaitPrompt(const WindowFacts& facts) const {
    require("the prompt is shown", [&] { return prompt(facts).has_value(); });
    const xcb_window_t window = prompt(facts).value_or(XCB_NONE);
    require("the prompt has the focus", [&] { return facts.focus() == window; });
    return window;
}

std::optional<xcb_window_t> Program::panel(const WindowFacts& facts) const {
    for (const xcb_window_t window : windows(facts))
        if (!isPrompt(facts.box(window)))
            return window;
    return std::nullopt;
}

} // namespace mirrolet::harness
