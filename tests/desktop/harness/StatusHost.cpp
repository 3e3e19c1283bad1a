#include "tests/desktop/harness/StatusHost.h"

#include "tests/desktop/harness/Wait.h"

#include <algorithm>

namespace mirrolet::harness {

StatusHost::StatusHost(const SessionBus& bus)
    : process(
          std::make_unique<ChildProcess>(ChildProcess::Options{.command = {STATUS_HOST_PROGRAM},
                                                               .environment = bus.with(sandbox.environment()),
                                                               .pipeInput = true,
                                                               .pipeOutput = true})) {
    require("the registry of status icons", [this] { return !process->lines().empty(); });
}

int StatusHost::icons() const {
    const auto& lines = process->lines();
    const auto count = [&lines](const char* start) {
        return std::count_if(lines.begin(), lines.end(),
                             [start](const std::string& line) { return line.starts_with(start); });
    };
    return static_cast<int>(count("item ") - count("gone"));
}

} // namespace mirrolet::harness
