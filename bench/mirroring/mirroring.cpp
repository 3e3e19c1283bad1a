// Compares the cost of Mirrolet's capture and presenter with the cost of a minimal Qt program. Both mirror
// the same window at a size of 320 x 200. The mirrored window has 1280 x 800 pixels and repaints thirty times
// a second. Prints the processor time of each program, that of the X server, and their sum, in milliseconds a
// second. The time that the X server uses for the mirrored window alone is left out. Also prints the ratio of
// the two sums.
//
//   bench_mirroring [SECONDS [ROW]]    default: 6 seconds, all rows

#include "bench/TextSource.h"
#include "tests/desktop/harness/DesktopServices.h"
#include "tests/desktop/harness/ProcessorTime.h"
#include "tests/desktop/harness/XServer.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>

namespace {

using namespace mirrolet::harness;
using Source = mirrolet::bench::TextSource;

/// Holds the processor time that a run has used, in milliseconds for each second.
struct Cost {
    double program = 0;
    double server = 0;
};

Cost measure(const XServer& server, Source& source, std::chrono::seconds time, const char* program) {
    const Sandbox sandbox;
    std::optional<ChildProcess> mirror;
    if (program)
        mirror.emplace(ChildProcess::Options{
            .command = {program, std::to_string(source.number()), "320", "200"},
            .environment = server.with(sandbox.environment()),
        });
    // Gives the program time to start, because the start is not measured.
    source.runFor(std::chrono::seconds(1));
    const auto used = [&] {
        return Cost{mirror ? processorTime(mirror->pid()) : 0, processorTime(server.pid())};
    };
    const auto before = used();
    source.runFor(time);
    const auto after = used();
    const double seconds = std::chrono::duration<double>(time).count();
    return {(after.program - before.program) / seconds, (after.server - before.server) / seconds};
}

struct Row {
    const char* what;
    Source::Change change;
    bool composited;
};

void run(const Row& row, std::chrono::seconds time) {
    const XServer server({.width = 1400, .height = 1100});
    std::optional<Picom> picom;
    if (row.composited)
        picom.emplace(server);
    Source source(server, row.change);
    const auto alone = measure(server, source, time, nullptr);
    const auto ours = measure(server, source, time, MIRROR_PARTS_PROGRAM);
    const auto theirs = measure(server, source, time, QT_GRABBER_PROGRAM);
    const double oursAdded = ours.program + ours.server - alone.server;
    const double theirsAdded = theirs.program + theirs.server - alone.server;
    std::printf("%-22s %8.1f  %7.2f %7.1f %7.1f  %7.1f %7.1f %7.1f  %7.3f\n", row.what, alone.server,
                ours.program, ours.server - alone.server, oursAdded, theirs.program,
                theirs.server - alone.server, theirsAdded, oursAdded / theirsAdded);
    std::fflush(stdout);
}

} // namespace

int main(int argumentCount, char** arguments) {
    const std::chrono::seconds time(argumentCount > 1 ? std::atoi(arguments[1])
                                                      : 6); // NOLINT: atoi() suffices here.
    try {
        std::printf("%-22s %8s  %23s  %23s  %7s\n", "", "source", "capture and presenter",
                    "minimal Qt program", "ratio");
        std::printf("%-22s %8s  %7s %7s %7s  %7s %7s %7s\n", "ms per second", "server", "program", "server+",
                    "sum", "program", "server+", "sum");
        const std::string only = argumentCount > 2 ? arguments[2] : "";
        const auto wanted = [&only](const Row& row) { return only.empty() || only == row.what; };
        for (const auto& row :
             {Row{"still", Source::Change::none, false}, Row{"small", Source::Change::small, false},
              Row{"all", Source::Change::full, false}, Row{"small-picom", Source::Change::small, true},
              Row{"all-picom", Source::Change::full, true}})
            if (wanted(row))
                run(row, time);
        return EXIT_SUCCESS;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return EXIT_FAILURE;
    }
}
