// What does a mirror cost? A window of 1280 x 800 that repaints thirty times a second is mirrored into 320 x
// 200, by capture and presenter, and by a minimal Qt program, in one run. Processor time of the program and
// of the X server, above what the server needs for the source alone. Milliseconds a second, and the ratio of
// the two.
//
//   bench_mirroring [SECONDS [ROW]]

#include "bench/ProcessorTime.h"
#include "tests/desktop/MirrorParts.h"
#include "tests/desktop/harness/DesktopServices.h"
#include "tests/desktop/harness/TextPage.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <optional>
#include <thread>

namespace {

using namespace mirrolet::harness;
using Clock = std::chrono::steady_clock;

constexpr int width = 1280;
constexpr int height = 800;

/// The window that is mirrored, and what it does.
class Source {
  public:
    enum class Change { none, small, full };

    Source(const XServer& server, Change change) : client(server), change(change), window(makeWindow()) {
        page = xcb_generate_id(client.xcb());
        xcb_create_pixmap(client.xcb(), 24, page, window, width, 2 * height);
        drawTextPage(client, page, width, 2 * height);
        context = xcb_generate_id(client.xcb());
        const std::uint32_t noExposures = 0;
        xcb_create_gc(client.xcb(), context, page, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
        show(0, 0, width, height, 0);
    }

    [[nodiscard]] xcb_window_t number() const { return window; }

    /// Repaints thirty times a second for as long.
    void runFor(std::chrono::seconds time) {
        const auto end = Clock::now() + time;
        for (auto due = Clock::now(); due < end;
             due += std::chrono::nanoseconds(std::chrono::seconds(1)) / 30) {
            std::this_thread::sleep_until(due);
            ++frame;
            if (change == Change::full)
                show(0, 0, width, height, frame * 14 % height);
            else if (change == Change::small)
                show(600, 300, 200, 28, frame * 14 % height);
        }
    }

  private:
    xcb_window_t makeWindow() {
        const auto made = xcb_generate_id(client.xcb());
        const std::uint32_t overrideRedirect = 1;
        xcb_create_window(client.xcb(), XCB_COPY_FROM_PARENT, made, client.root(), 0, 250, width, height, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                          &overrideRedirect);
        xcb_map_window(client.xcb(), made);
        client.sync();
        return made;
    }

    void show(std::int16_t x, std::int16_t y, std::uint16_t w, std::uint16_t h, int scrolled) {
        xcb_copy_area(client.xcb(), page, window, context, x, static_cast<std::int16_t>(y + scrolled), x, y,
                      w, h);
        xcb_flush(client.xcb());
    }

    XClient client;
    Change change;
    xcb_window_t window;
    xcb_pixmap_t page = XCB_NONE;
    xcb_gcontext_t context = XCB_NONE;
    int frame = 0;
};

/// Milliseconds of processor time for each second of a run.
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
    source.runFor(std::chrono::seconds(1)); // Its start is not what is measured.
    const auto used = [&] {
        return Cost{mirror ? mirrolet::bench::processorTime(mirror->pid()) : 0,
                    mirrolet::bench::processorTime(server.pid())};
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
                                                      : 6); // NOLINT: a developer's tool.
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
