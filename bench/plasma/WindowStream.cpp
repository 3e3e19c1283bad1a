#include "bench/plasma/WindowStream.h"

#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/Wait.h"

#include <cstdlib>

namespace mirrolet::bench {

using namespace platform::desktop::wayland;
using harness::HarnessError;

WindowStream::WindowStream(const std::string& socket) {
    setenv("WAYLAND_DISPLAY", socket.c_str(), 1);
    std::string problem;
    connection = WaylandConnection::open(problem);
    if (!connection)
        throw HarnessError(problem);
    windows = std::make_unique<PlasmaWindows>(*connection);
    screencasts = std::make_unique<Screencasts>(*connection);
    connection->waitForReplies();
    connection->waitForReplies();
    connection->start([] {});
    const auto listed = windows->model().frontToBack();
    if (listed.empty())
        throw HarnessError("KWin lists no window");
    screencast = screencasts->open(listed.front().uuid, [] {});
    harness::require("KWin streams the window", [this] { return screencast->state().node.has_value(); });
}

WindowStream::~WindowStream() {
    screencast.reset();
    if (connection)
        connection->end();
    screencasts.reset();
    windows.reset();
}

std::uint32_t WindowStream::node() const {
    return screencast->state().node.value_or(0);
}

} // namespace mirrolet::bench
