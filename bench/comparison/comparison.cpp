// Compares Mirrolet with other programs that can mirror a window. The mirrored window has 1280 x 800 pixels
// and is full of text. On the same desktop, each program mirrors the window at a size of 320 x 200, fifteen
// times a second. Prints one line of tab-separated values for each measurement. The script bench/side-by-side
// reads these lines.
//
//   bench_comparison [SECONDS [ROUNDS]]    default: 2 seconds, 3 rounds

#include "bench/ProcessFigures.h"
#include "bench/TextSource.h"
#include "bench/program/Desktop.h"
#include "tests/desktop/harness/ProcessorTime.h"
#include "tests/desktop/harness/Similarity.h"
#include "tests/desktop/harness/Wait.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>
#include <thread>

namespace {

using namespace mirrolet::bench;
using namespace mirrolet::harness;
using std::chrono::seconds;

constexpr int panelWidth = 320;
constexpr int panelHeight = 200;
constexpr int sourceX = 20;
constexpr int sourceY = 250;

struct Situation {
    bool composited, obscured, changing;
};

/// Runs a program that mirrors the window. The destructor ends the program.
class Mirror {
  public:
    virtual ~Mirror() = default;
    [[nodiscard]] virtual pid_t pid() const = 0;
    [[nodiscard]] virtual xcb_window_t panel() const = 0;
};

class MirroletMirror final : public Mirror {
  public:
    explicit MirroletMirror(Desktop& desktop) : program(desktop.start(2)) {
        window = desktop.acceptPrompt(*program);
        desktop.resize(window, panelWidth, panelHeight);
    }
    [[nodiscard]] pid_t pid() const override { return program->pid(); }
    [[nodiscard]] xcb_window_t panel() const override { return window; }

  private:
    std::unique_ptr<Program> program;
    xcb_window_t window;
};

/// Runs a program other than Mirrolet. Moves the program's window to a place where it obscures no other
/// window.
class OtherMirror final : public Mirror {
  public:
    OtherMirror(Desktop& desktop, const std::vector<std::string>& command) {
        auto environment = desktop.server.with(sandbox.environment());
        environment["SDL_VIDEODRIVER"] = "x11";
        environment["SDL_RENDER_DRIVER"] = "software"; // Xvfb has no GPU for SDL.
        process.emplace(ChildProcess::Options{
            .command = command, .environment = environment, .log = sandbox.folder() / "mirror.log"});
        require("a window of " + command.front(), [&] { return findWindow(desktop.facts); });
        const std::uint32_t place[] = {1340, 600};
        xcb_configure_window(desktop.client.xcb(), window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, place);
        desktop.client.sync();
    }
    [[nodiscard]] pid_t pid() const override { return process->pid(); }
    [[nodiscard]] xcb_window_t panel() const override { return window; }

  private:
    bool findWindow(const WindowFacts& facts) {
        for (const auto each : facts.windowsOf(process->pid()))
            if (facts.box(each).width == panelWidth && facts.box(each).height == panelHeight)
                window = each;
        return window != XCB_NONE;
    }

    Sandbox sandbox;
    std::optional<ChildProcess> process;
    xcb_window_t window = XCB_NONE;
};

std::vector<std::string> gstreamer(const std::string& source, const char* useDamage) {
    return {"gst-launch-1.0",
            "-q",
            "ximagesrc",
            "xid=" + source,
            std::string("use-damage=") + useDamage,
            "show-pointer=false",
            "!",
            "video/x-raw,framerate=15/1",
            "!",
            "videoscale",
            "method=bilinear2",
            "!",
            "video/x-raw,width=320,height=200",
            "!",
            "ximagesink"};
}

std::vector<std::string> ffplay(const std::string& display, const std::string& source) {
    return {"ffplay", "-loglevel",  "quiet", "-noborder",  "-f",   "x11grab", "-draw_mouse",
            "0",      "-framerate", "15",    "-window_id", source, "-vf",     "scale=320:200:flags=area",
            "-x",     "320",        "-y",    "200",        "-i",   display};
}

const char* const names[] = {"Mirrolet", "GStreamer", "GStreamer, damage", "ffplay", "Qt grabber"};

std::unique_ptr<Mirror> start(const std::string& name, Desktop& desktop, xcb_window_t window) {
    const auto source = std::to_string(window);
    if (name == "GStreamer")
        return std::make_unique<OtherMirror>(desktop, gstreamer(source, "0"));
    if (name == "GStreamer, damage")
        return std::make_unique<OtherMirror>(desktop, gstreamer(source, "1"));
    if (name == "ffplay")
        return std::make_unique<OtherMirror>(desktop, ffplay(desktop.server.display(), source));
    if (name == "Qt grabber")
        return std::make_unique<OtherMirror>(
            desktop, std::vector<std::string>{QT_GRABBER_PROGRAM, source, "320", "200"});
    return std::make_unique<MirroletMirror>(desktop);
}

/// Reads the box on the screen sixty times a second for the given time. Returns how often the pixels in the
/// box changed.
int changesDuring(seconds time, const Desktop& desktop, const Box& box) {
    XClient client(desktop.server);
    const WindowFacts facts(client);
    const auto start = std::chrono::steady_clock::now();
    auto shown = facts.screenshot(box).pixels;
    int changes = 0;
    for (int look = 1; look <= 60 * time.count(); ++look) {
        std::this_thread::sleep_until(start + look * std::chrono::nanoseconds(seconds(1)) / 60);
        auto now = facts.screenshot(box).pixels;
        changes += now != shown ? 1 : 0;
        shown = std::move(now);
    }
    return changes;
}

/// Repaints the source for the given time. Returns how many new pictures a second the mirror showed.
double framesDuring(seconds time, TextSource& source, Desktop& desktop, xcb_window_t panel) {
    // Reads only a part of the mirror, which suffices because the text scrolls everywhere.
    Box strip = desktop.facts.box(panel);
    strip.x += strip.width / 4;
    strip.y += strip.height / 2;
    strip.width /= 2;
    strip.height = 16;
    int changes = 0;
    std::thread watcher([&] { changes = changesDuring(time, desktop, strip); });
    source.runFor(time);
    watcher.join();
    return changes / static_cast<double>(time.count());
}

/// Returns the picture without its outermost pixels, because a mirror draws its border and its round corners
/// there.
Picture inside(const Picture& picture) {
    constexpr int edge = 16;
    Picture result{picture.width - 2 * edge, picture.height - 2 * edge, {}};
    for (int y = 0; y < result.height; ++y)
        for (int x = 0; x < result.width; ++x)
            result.pixels.push_back(picture.at(x + edge, y + edge));
    return result;
}

/// Returns the similarity (SSIM) of the mirror and a perfectly downscaled picture of the source. The mirror
/// shows the last change a moment later, so the function compares for up to half a second and returns the
/// best result.
double likeness(TextSource& source, Desktop& desktop, xcb_window_t panel) {
    source.repaint();
    const auto expected = inside(areaAverage(source.picture(), panelWidth, panelHeight));
    double best = 0;
    const auto isGood = [&] {
        best =
            std::max(best, similarity(inside(desktop.facts.screenshot(desktop.facts.box(panel))), expected));
        return best > 0.99;
    };
    waitUntil(isGood, std::chrono::milliseconds(500));
    return best;
}

struct Usage {
    double program, server;
};

Usage usageNow(pid_t program, const Desktop& desktop) {
    return {program > 0 ? processorTime(program) : 0, processorTime(desktop.server.pid())};
}

Usage usageDuring(seconds time, TextSource& source, pid_t program, const Desktop& desktop) {
    // Gives the program time to start, because the start is not measured.
    source.runFor(std::chrono::milliseconds(600));
    const auto before = usageNow(program, desktop);
    const auto start = std::chrono::steady_clock::now();
    source.runFor(time);
    const auto after = usageNow(program, desktop);
    const double length = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return {(after.program - before.program) / length, (after.server - before.server) / length};
}

struct Figures {
    Usage usage;
    double memory, frames, ssim;
};

Figures figuresOf(const char* name, bool changing, seconds time, TextSource& source, Desktop& desktop) {
    source.repaint();
    const auto mirror = start(name, desktop, source.number());
    const auto usage = usageDuring(time, source, mirror->pid(), desktop);
    const double memory = peakMemory(mirror->pid());
    const double frames = changing ? framesDuring(seconds(1), source, desktop, mirror->panel()) : 0;
    return {usage, memory, frames, likeness(source, desktop, mirror->panel())};
}

void measure(const Situation& situation, seconds time) {
    Desktop desktop;
    std::optional<Picom> picom;
    if (situation.composited)
        picom.emplace(desktop.server);
    TextSource source(desktop.server,
                      situation.changing ? TextSource::Change::full : TextSource::Change::none, sourceX,
                      sourceY);
    std::optional<CallWindow> cover;
    if (situation.obscured) {
        CallWindow::Options options{.title = "Notes", .wmClass = "Editor", .wmInstance = "editor"};
        options.place = desktop.facts.box(source.number());
        options.colour = "3f5170";
        options.overrideRedirect = true;
        cover.emplace(desktop.server, options);
    }
    // The X server needs processor time even without a mirror. This time is measured before and after each
    // program, because it changes slowly during a run. The mean of the two values is subtracted from the
    // server's time with the program.
    const auto alone = [&] { return usageDuring(time, source, 0, desktop).server; };
    double before = alone();
    for (const char* name : names) {
        const auto figures = figuresOf(name, situation.changing, time, source, desktop);
        const double after = alone();
        const double server = figures.usage.server - (before + after) / 2;
        before = after;
        std::printf("%s\t%s\t%s\t%s\t%.3f\t%.3f\t%.1f\t%.1f\t%.3f\n", situation.composited ? "yes" : "no",
                    situation.obscured ? "yes" : "no", situation.changing ? "yes" : "no", name,
                    figures.usage.program, server, figures.memory, figures.frames, figures.ssim);
        std::fflush(stdout);
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    const seconds time(argumentCount > 1 ? std::atoi(arguments[1]) : 2); // NOLINT: atoi() suffices here.
    const int rounds = argumentCount > 2 ? std::atoi(arguments[2]) : 3;  // NOLINT
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        std::signal(number, [](int) { interruptWait(); });
    try {
        requireProgram("gst-launch-1.0", "gstreamer1.0-tools");
        requireProgram("ffplay", "ffmpeg");
        std::puts("composited\tobscured\tchanging\tprogram\tprogram ms/s\tserver ms/s\tMB\tframes/s\tSSIM");
        for (int round = 0; round < rounds; ++round)
            for (const bool changing : {true, false})
                for (const bool composited : {true, false})
                    for (const bool obscured : {false, true})
                        measure({composited, obscured, changing}, time);
        return EXIT_SUCCESS;
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%s\n", problem.what());
        return EXIT_FAILURE;
    }
}
