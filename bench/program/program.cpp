// Measures what the whole program costs. Starts Mirrolet on a desktop of its own (Xvfb, openbox, a tray) and
// does what a user does: shows a call window of 1280 x 800, answers the prompt with Return, resizes the
// mirror to 320 x 200, and ends the call. Measures each figure several times and prints one table. The column
// "reach" shows the highest value that a figure should have.
//
//   bench_program [SECONDS [ROUNDS]]    default: 5 seconds, 5 rounds, about five minutes

#include "bench/program/Figures.h"
#include "tests/desktop/harness/Wait.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <string>
#include <thread>

namespace {

using namespace mirrolet::bench;

std::string line(const char* file) {
    std::string text;
    std::getline(std::ifstream(file) >> std::ws, text);
    return text;
}

std::string processorName() {
    std::ifstream file("/proc/cpuinfo");
    for (std::string text; std::getline(file, text);)
        if (text.starts_with("model name"))
            return text.substr(text.find(':') + 2);
    return "unknown";
}

void printHead(const Effort& effort) {
    std::printf("%u processors: %s; load at the start %s\n", std::thread::hardware_concurrency(),
                processorName().c_str(), line("/proc/loadavg").c_str());
    std::printf("each %lld s long\n\n", static_cast<long long>(effort.time.count()));
    std::printf("%-58s %-8s %8s %8s %8s %8s %5s\n", "what", "unit", "median", "least", "most", "reach",
                "runs");
}

/// Prints one row of the table. `reach` is the highest value that the figure should have, or 0 if there is no
/// such value.
void print(const char* what, const char* unit, const Series& figures, double reach = 0) {
    std::string limit;
    if (reach > 0) {
        limit.resize(16);
        limit.resize(static_cast<std::size_t>(std::snprintf(limit.data(), limit.size(), "%g", reach)));
    }
    std::printf("%-58s %-8s %8.2f %8.2f %8.2f %8s %5zu\n", what, unit, figures.median(), figures.least(),
                figures.most(), limit.c_str(), figures.size());
    std::fflush(stdout);
}

void run(const Effort& effort) {
    printHead(effort);
    const auto wakes = measureWakes(effort);
    print("this machine: 15 wakes/s, each waking a second thread", "ms/s", wakes.processor);
    print("  one wake-up of a thread that does nothing", "us", wakes.wake);
    const auto moving = measureMirror(effort, 30);
    print("mirroring 30 repaints/s: Mirrolet", "ms/s", moving.program, 3);
    print("  its wake-ups", "1/s", moving.wakes);
    print("  the X server on top of the source alone", "ms/s", moving.server);
    print("  both together", "ms/s", moving.sum);
    print("  a minimal Qt program and the X server", "ms/s", moving.qtSum);
    print("  both together against the minimal Qt program", "ratio", moving.ratio, 0.4);
    const auto still = measureMirror(effort, 0);
    print("mirroring a still window: Mirrolet and X server", "ms/s", still.sum, 2);
    print("  Mirrolet", "ms/s", still.program);
    print("  its wake-ups", "1/s", still.wakes);
    print("  a minimal Qt program and the X server", "ms/s", still.qtSum);
    const auto idle = measureIdle(effort);
    print("idle, 50 windows, a poll every 2 s: Mirrolet", "ms/s", idle.processor, 2);
    print("  its wake-ups", "1/s", idle.wakes);
    print("start to status item shown", "ms", measureStart(effort), 500);
    print("peak resident memory of a session", "MB", moving.memory, 80);
    print("mirrored window destroyed to panel gone", "ms", measureEnd(effort), 150);
    std::printf("\nload at the end %s\n", line("/proc/loadavg").c_str());
}

} // namespace

int main(int argumentCount, char** arguments) {
    Effort effort;
    if (argumentCount > 1)
        effort.time = std::chrono::seconds(std::atoi(arguments[1])); // NOLINT: atoi() suffices here.
    if (argumentCount > 2)
        effort.rounds = std::atoi(arguments[2]); // NOLINT
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        std::signal(number, [](int) { mirrolet::harness::interruptWait(); });
    try {
        run(effort);
        return EXIT_SUCCESS;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return EXIT_FAILURE;
    }
}
