#include "bench/program/Figures.h"

#include "bench/Crowd.h"
#include "bench/ProcessFigures.h"
#include "bench/program/Desktop.h"
#include "tests/desktop/harness/ProcessorTime.h"
#include "tests/desktop/harness/StatusIcon.h"
#include "tests/desktop/harness/Wait.h"

#include <csignal>
#include <semaphore>
#include <thread>
#include <unistd.h>

namespace mirrolet::bench {

using namespace harness;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int panelWidth = 320;
constexpr int panelHeight = 200;
constexpr double usualPollInterval = 2;
// A short poll interval in seconds, for measurements that do not include the time until the prompt.
constexpr double quickPollInterval = 0.2;

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// Runs two threads. The first thread wakes fifteen times a second, and then wakes the second thread.
/// Mirrolet's capture thread wakes the main thread in the same way.
void passWakesOn(std::chrono::seconds time) {
    constexpr int wakes = 15;
    constexpr auto period = std::chrono::nanoseconds(std::chrono::seconds(1)) / wakes;
    const auto count = wakes * time.count();
    std::counting_semaphore<> passed(0);
    const std::jthread second([&] {
        for (auto i = count; i > 0; --i)
            passed.acquire();
    });
    const auto start = Clock::now();
    for (auto i = count; i > 0; --i) {
        std::this_thread::sleep_until(start + (count - i) * period);
        passed.release();
    }
}

/// Holds the processor time and the wake-ups of the program, and the processor time of the X server. The
/// values are either totals since the process started, or values for each second of a measurement.
struct Usage {
    double program = 0;
    double wakes = 0;
    double server = 0;

    static Usage now(pid_t program, pid_t server) {
        return {program > 0 ? processorTime(program) : 0, program > 0 ? wakeUps(program) : 0,
                processorTime(server)};
    }
};

/// Measures for the given time. Returns the usage for each second. If `program` is 0, measures only the X
/// server.
Usage usageDuring(std::chrono::seconds time, pid_t program, pid_t server) {
    // Gives the program time to start, because the start is not measured.
    std::this_thread::sleep_for(std::chrono::seconds(1));
    const auto start = Clock::now();
    const auto before = Usage::now(program, server);
    std::this_thread::sleep_for(time);
    const auto after = Usage::now(program, server);
    const double seconds = millisecondsSince(start) / 1000;
    return {(after.program - before.program) / seconds, (after.wakes - before.wakes) / seconds,
            (after.server - before.server) / seconds};
}

Usage usageOfMirrolet(Desktop& desktop, const Effort& effort, Series& memory) {
    const auto program = desktop.start(usualPollInterval);
    desktop.resize(desktop.acceptPrompt(*program), panelWidth, panelHeight);
    const auto usage = usageDuring(effort.time, program->pid(), desktop.server.pid());
    memory.add(peakMemory(program->pid()));
    program->child().signal(SIGTERM);
    program->child().waitForExit();
    return usage;
}

Usage usageOfQt(Desktop& desktop, const Effort& effort, xcb_window_t source) {
    const Sandbox sandbox;
    const ChildProcess program({.command = {QT_GRABBER_PROGRAM, std::to_string(source),
                                            std::to_string(panelWidth), std::to_string(panelHeight)},
                                .environment = desktop.server.with(sandbox.environment())});
    return usageDuring(effort.time, program.pid(), desktop.server.pid());
}

/// Waits until the condition holds. Checks the condition more often than waitUntil() does, because the times
/// that are measured in this way are short.
void spinUntil(const Condition& condition) {
    for (const auto start = Clock::now(); !condition() && Clock::now() - start < patience;)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

} // namespace

WakeFigures measureWakes(const Effort& effort) {
    WakeFigures figures;
    for (int round = 0; round < effort.rounds; ++round) {
        const double processorBefore = processorTime(getpid());
        const double wakesBefore = wakeUps(getpid());
        // processorTime() counts only threads that still run, so both threads run a second longer than the
        // measurement.
        const std::jthread first([&] { passWakesOn(effort.time + std::chrono::seconds(1)); });
        std::this_thread::sleep_for(effort.time);
        const double processor = processorTime(getpid()) - processorBefore;
        const double wakes = wakeUps(getpid()) - wakesBefore;
        figures.processor.add(processor / static_cast<double>(effort.time.count()));
        figures.wake.add(processor / wakes * 1000);
    }
    return figures;
}

MirrorFigures measureMirror(const Effort& effort, int framesPerSecond) {
    MirrorFigures figures;
    for (int round = 0; round < effort.rounds; ++round) {
        Desktop desktop;
        const auto source = desktop.showCall(framesPerSecond);
        const auto alone = usageDuring(effort.time, 0, desktop.server.pid());
        const auto ours = usageOfMirrolet(desktop, effort, figures.memory);
        const auto qt = usageOfQt(desktop, effort, source->window());
        const double oursAdded = ours.server - alone.server;
        const double qtSum = qt.program + qt.server - alone.server;
        figures.program.add(ours.program);
        figures.wakes.add(ours.wakes);
        figures.server.add(oursAdded);
        figures.sum.add(ours.program + oursAdded);
        figures.qtSum.add(qtSum);
        figures.ratio.add((ours.program + oursAdded) / qtSum);
    }
    return figures;
}

IdleFigures measureIdle(const Effort& effort) {
    IdleFigures figures;
    const Desktop desktop;
    const auto windows = crowd(desktop.server, 50);
    const auto program = desktop.start(usualPollInterval);
    require("the status icon", [&] { return statusIcon(desktop.facts, program->pid()).has_value(); });
    for (int round = 0; round < effort.rounds; ++round) {
        // Measures for an even number of seconds. Mirrolet polls every two seconds, so each round then has
        // the same number of polls.
        const auto time = 2 * std::chrono::seconds((effort.time.count() + 1) / 2);
        const auto usage = usageDuring(time, program->pid(), desktop.server.pid());
        figures.processor.add(usage.program);
        figures.wakes.add(usage.wakes);
    }
    return figures;
}

Series measureStart(const Effort& effort) {
    Series figures;
    const Desktop desktop;
    for (int round = 0; round < 2 * effort.rounds; ++round) {
        const auto start = Clock::now();
        const auto program = desktop.start(usualPollInterval);
        spinUntil([&] {
            const auto icon = statusIcon(desktop.facts, program->pid());
            return icon && isStatusIconDrawn(desktop.facts, *icon);
        });
        figures.add(millisecondsSince(start));
    }
    return figures;
}

Series measureEnd(const Effort& effort) {
    Series figures;
    Desktop desktop;
    const auto program = desktop.start(quickPollInterval);
    for (int round = 0; round < 4 * effort.rounds; ++round) {
        const auto call = desktop.showCall(30);
        const auto panel = desktop.acceptPrompt(*program);
        const auto start = Clock::now();
        xcb_destroy_window(desktop.client.xcb(), call->window());
        desktop.client.sync();
        spinUntil([&] { return !desktop.facts.viewable(panel); });
        figures.add(millisecondsSince(start));
        // Waits until Mirrolet has polled while there is no call. Otherwise Mirrolet would think that the
        // next call is still the same call, and would not show a prompt.
        require("no mirror", [&] { return !program->panel(desktop.facts); });
        std::this_thread::sleep_for(3 * std::chrono::duration<double>(quickPollInterval));
    }
    return figures;
}

} // namespace mirrolet::bench
