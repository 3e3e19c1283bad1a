#include "bench/program/Figures.h"

#include "bench/Crowd.h"
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
constexpr double quickPollInterval = 0.2; // Used if the measurement begins after the prompt.

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// Runs a thread that wakes at each deadline and then wakes a second thread, as a queue wakes the main
/// thread.
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

/// The processor time and wake-ups of the program and the X server. Either the totals up to now, or the
/// values for each second of a measurement.
struct Usage {
    double program = 0;
    double wakes = 0;
    double server = 0;

    static Usage now(pid_t program, pid_t server) {
        return {program > 0 ? processorTime(program) : 0, program > 0 ? wakeUps(program) : 0,
                processorTime(server)};
    }
};

/// Measures the usage for each second of the time. If `program` is 0, measures the server alone.
Usage usageDuring(std::chrono::seconds time, pid_t program, pid_t server) {
    std::this_thread::sleep_for(std::chrono::seconds(1)); // The start is not measured.
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

/// Polls more often than the harness, because the measured times are only a few polls of the harness long.
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
        // Only running threads are counted, so both threads outlive the reading.
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
        // Each round has the same number of polls.
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
        // A call counts as a new one only after a poll that saw no call.
        require("no mirror", [&] { return !program->panel(desktop.facts); });
        std::this_thread::sleep_for(3 * std::chrono::duration<double>(quickPollInterval));
    }
    return figures;
}

} // namespace mirrolet::bench
