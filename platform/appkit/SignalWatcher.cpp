#include "platform/appkit/SignalWatcher.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace mirrolet::platform {

namespace {

constexpr std::array endingSignals = {SIGTERM, SIGINT, SIGHUP};
int writeEnd = -1; ///< Set before the handlers, because a signal handler may use nothing else.

void noteSignal(int /*number*/) {
    const int saved = errno;
    const char byte = 1;
    [[maybe_unused]] const auto written =
        write(writeEnd, &byte, 1); // A failure is harmless, because a full pipe has woken the reader already.
    errno = saved;
}

int openPipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        std::abort(); // Happens only if no file descriptors are left at the very start.
    writeEnd = ends[1];
    return ends[0];
}

void setHandlers(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int number : endingSignals)
        sigaction(number, &action, nullptr);
}

} // namespace

SignalWatcher::SignalWatcher(std::function<void()> endRequested)
    : handler(std::move(endRequested)), readEnd(openPipe()), notifier(readEnd, QSocketNotifier::Read) {
    QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [this] {
        std::array<char, 16> bytes;
        while (read(readEnd, bytes.data(), bytes.size()) > 0) {
        }
        handler();
    });
    setHandlers(noteSignal);
}

SignalWatcher::~SignalWatcher() {
    setHandlers(SIG_DFL);
    close(readEnd);
    close(std::exchange(writeEnd, -1));
}

} // namespace mirrolet::platform
