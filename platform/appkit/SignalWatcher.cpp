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
/// The end of the pipe that the signal handler writes to. Global, because the handler gets only the signal's
/// number. Set before the handler is installed.
int writeEnd = -1;

void noteSignal(int /*number*/) {
    const int saved = errno;
    const char byte = 1;
    // The write fails if the pipe is full. That is harmless, because the bytes in the pipe wake the reader.
    [[maybe_unused]] const auto written = write(writeEnd, &byte, 1);
    errno = saved;
}

int openPipe() {
    std::array<int, 2> ends{};
    // This fails only if the process has no file descriptors left at its very start.
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        std::abort();
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
