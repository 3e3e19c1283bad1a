#include "tests/desktop/harness/ScreenReader.h"

#include "tests/desktop/harness/HarnessError.h"

#include <sstream>

namespace mirrolet::harness {

namespace {

constexpr auto launcher = "/usr/libexec/at-spi-bus-launcher"; // The folder /usr/libexec is not on PATH.

ScreenReader::Element elementIn(const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, '\t');)
        fields.push_back(field);
    fields.resize(7);
    ScreenReader::Element element{fields[0], fields[1], fields[2], fields[3], {}, fields[6]};
    std::istringstream(fields[5]) >> element.box.x >> element.box.y >> element.box.width >>
        element.box.height;
    const auto has = [&states = fields[4]](const char* state) {
        return states.find(state) != std::string::npos;
    };
    element.focused = has("focused");
    element.focusable = has("focusable");
    element.checked = has("checked");
    return element;
}

ChildProcess::Options reading(const SessionBus& bus, const Sandbox& sandbox, pid_t program) {
    return {.command = {SCREEN_READER_PROGRAM, std::to_string(program)},
            .environment = bus.with(sandbox.environment()),
            .log = sandbox.folder() / "reader.log",
            .pipeOutput = true};
}

} // namespace

ScreenReader::ScreenReader(const SessionBus& bus) : bus(bus) {
    if (!std::filesystem::exists(launcher))
        throw HarnessError("the accessibility bus is missing: install the Debian package at-spi2-core");
    accessibilityBus =
        std::make_unique<ChildProcess>(ChildProcess::Options{.command = {launcher, "--launch-immediately"},
                                                             .environment = bus.with(sandbox.environment()),
                                                             .log = sandbox.folder() / "accessibility.log"});
    require("the accessibility bus answers",
            [&] { return ChildProcess(reading(bus, sandbox, 0)).waitForExit() == 0; });
}

std::vector<ScreenReader::Element> ScreenReader::read(pid_t program) const {
    ChildProcess reader(reading(bus, sandbox, program));
    // Reads lines while the program still runs. Otherwise a long list would fill the pipe, and the program
    // would wait forever.
    waitUntil([&] {
        const bool ended = !reader.running();
        reader.lines();
        return ended;
    });
    std::vector<Element> elements;
    for (const std::string& line : reader.lines())
        elements.push_back(elementIn(line));
    return elements;
}

} // namespace mirrolet::harness
