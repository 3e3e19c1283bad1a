// Measures what a mirror costs in a Plasma session on Wayland. Starts KWin without a screen, and a native
// window of 1280 x 800. Mirrors the window at a size of 320 x 200, first with Mirrolet and then with
// GStreamer. Both read a PipeWire stream of the window, and show it through XWayland. Prints one table. The
// times of KWin and XWayland do not include what the window alone costs.
//
//   bench_plasma [SECONDS [ROUNDS]]    default: 5 seconds, 3 rounds, about two minutes

#include "bench/plasma/PlasmaDesktop.h"
#include "bench/program/Series.h"
#include "tests/desktop/harness/HarnessError.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <thread>

namespace {

using namespace mirrolet::bench;

/// Holds the costs of several rounds, in milliseconds of processor time a second.
struct CostSeries {
    Series program, compositor, server, total;

    void add(const Cost& cost) {
        program.add(cost.program);
        compositor.add(cost.compositor);
        server.add(cost.server);
        total.add(cost.total());
    }
};

struct Figures {
    CostSeries mirrolet, gstreamer;
    Series frames, framesOfGStreamer, ratio, memory, latency;
};

void print(const char* what, const char* unit, const Series& series, double reach = 0) {
    std::printf("%-56s %-6s %8.2f %8.2f %8.2f", what, unit, series.median(), series.least(), series.most());
    if (reach > 0)
        std::printf(" %6g", reach);
    std::printf("\n");
    std::fflush(stdout);
}

void print(const char* who, const CostSeries& costs, double reachOfProgram) {
    std::printf("%s\n", who);
    print("  the program", "ms/s", costs.program, reachOfProgram);
    print("  KWin, above the window alone", "ms/s", costs.compositor);
    print("  XWayland, above the window alone", "ms/s", costs.server);
    print("  all three", "ms/s", costs.total);
}

/// Measures one round. `framesPerSecond` is 0 for a window that stands still.
void measure(Figures& figures, int framesPerSecond, std::chrono::seconds time) {
    PlasmaDesktop desktop(framesPerSecond);
    const Cost alone = desktop.costDuring(time, 0);
    const auto mirrolet = desktop.mirror();
    const Cost ours = desktop.costDuring(time, mirrolet->pid()).above(alone);
    figures.mirrolet.add(ours);
    figures.memory.add(desktop.peakMemoryOf(mirrolet->pid()));
    const double frames = desktop.framesPerSecond(desktop.panelOf(*mirrolet));
    figures.frames.add(frames);
    if (framesPerSecond == 0)
        figures.latency.add(desktop.latency(*mirrolet));
    desktop.end(*mirrolet);
    const auto gstreamer = desktop.mirrorWithGStreamer();
    const Cost theirs = desktop.costDuring(time, gstreamer->pid()).above(alone);
    figures.gstreamer.add(theirs);
    const double framesOfGStreamer = desktop.framesPerSecond(desktop.windowOfGStreamer());
    figures.framesOfGStreamer.add(framesOfGStreamer);
    figures.ratio.add(ours.total() / frames / (theirs.total() / framesOfGStreamer));
}

Figures measure(int framesPerSecond, std::chrono::seconds time, int rounds) {
    Figures figures;
    for (int round = 0; round < rounds; ++round)
        measure(figures, framesPerSecond, time);
    return figures;
}

void run(std::chrono::seconds time, int rounds) {
    std::printf("%-56s %-6s %8s %8s %8s %6s\n", "what", "unit", "median", "least", "most", "reach");
    const auto changing = measure(30, time, rounds);
    print("thirty repaints a second: Mirrolet", changing.mirrolet, 12);
    print("  frames", "1/s", changing.frames);
    print("thirty repaints a second: GStreamer", changing.gstreamer, 0);
    print("  frames", "1/s", changing.framesOfGStreamer);
    print("a frame of Mirrolet against a frame of GStreamer", "ratio", changing.ratio, 0.75);
    const auto still = measure(0, time, rounds);
    print("a still window: Mirrolet", still.mirrolet, 2);
    print("a still window: GStreamer", still.gstreamer, 0);
    print("frames of Mirrolet while the window is still", "1/s", still.frames);
    print("from a repaint to the mirror", "ms", still.latency);
    print("most memory of Mirrolet", "MB", changing.memory);
}

} // namespace

int main(int count, char** arguments) {
    const std::chrono::seconds time(count > 1 ? std::atoi(arguments[1]) : 5);
    const int rounds = count > 2 ? std::atoi(arguments[2]) : 3;
    if (time.count() < 1 || rounds < 1) {
        std::fprintf(stderr, "usage: bench_plasma [SECONDS [ROUNDS]]\n");
        return EXIT_FAILURE;
    }
    try {
        run(time, rounds);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_plasma: %s\n", error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
