#include "bench/plasma/PlasmaDesktop.h"

#include "bench/ProcessFigures.h"
#include "bench/program/Series.h"
#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/PanelDrag.h"
#include "tests/desktop/harness/ProcessorTime.h"
#include "tests/desktop/harness/Wait.h"

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>

namespace mirrolet::bench {

using namespace harness;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int panelWidth = 320;
constexpr int panelHeight = 200;
// The distance in pixels from the panel's lower right corner to a place on the grip.
constexpr int insideTheGrip = 6;
constexpr Box room{1340, 600, 0, 0};

/// Returns the pixels of a part of the mirror panel. Reads the panel itself, because XWayland's root window
/// shows nothing.
std::string pixelsOf(const XClient& client, xcb_window_t panel, const Box& part) {
    const auto number = [](auto value) { return static_cast<std::uint16_t>(value); };
    const std::unique_ptr<xcb_get_image_reply_t, void (*)(void*)> reply(
        xcb_get_image_reply(
            client.xcb(),
            xcb_get_image(client.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, panel, static_cast<std::int16_t>(part.x),
                          static_cast<std::int16_t>(part.y), number(part.width), number(part.height), ~0U),
            nullptr),
        std::free);
    if (!reply)
        return {};
    const auto* bytes = reinterpret_cast<const char*>(xcb_get_image_data(reply.get()));
    return {bytes, static_cast<std::size_t>(xcb_get_image_data_length(reply.get()))};
}

std::uint32_t middleOf(const XClient& client, xcb_window_t panel) {
    const auto bytes = pixelsOf(client, panel, {panelWidth / 2, panelHeight / 2, 1, 1});
    std::uint32_t pixel = 0;
    if (bytes.size() >= sizeof pixel)
        std::memcpy(&pixel, bytes.data(), sizeof pixel);
    return pixel & 0xffffff;
}

} // namespace

PlasmaDesktop::PlasmaDesktop(int framesPerSecond)
    : window(session, {.width = 1280, .height = 800, .rate = framesPerSecond, .decorated = false}) {}

std::unique_ptr<Program> PlasmaDesktop::mirror() {
    auto program = std::make_unique<Program>(&session, &session.bus(), Program::Options{});
    program->awaitPrompt(facts);
    // XWayland reports that the prompt has the focus a moment before KWin sends keys to the prompt.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    keyboard.stroke({key::returnKey});
    require("Return opens the mirror", [&] { return !program->prompt(facts) && program->panel(facts); });
    resize(*program->panel(facts));
    return program;
}

void PlasmaDesktop::resize(xcb_window_t panel) {
    const Box small = facts.box(panel);
    const Drag move{small.x + small.width / 2, small.y + small.height / 2, room.x + small.width / 2,
                    room.y + small.height / 2};
    dragPanel(facts, pointer, panel, move, {room.x, room.y, small.width, small.height});
    const int x = room.x + small.width - insideTheGrip;
    const int y = room.y + small.height - insideTheGrip;
    const Drag enlarge{x, y, x + panelWidth - small.width, y + panelHeight - small.height};
    dragPanel(facts, pointer, panel, enlarge, {room.x, room.y, panelWidth, panelHeight});
    pointer.move(2, 2);
}

void PlasmaDesktop::end(Program& program) const {
    program.child().signal(SIGTERM);
    program.child().waitForExit();
}

std::unique_ptr<ChildProcess> PlasmaDesktop::mirrorWithGStreamer() {
    stream.emplace(session.waylandSocket());
    const Sandbox sandbox;
    return std::make_unique<ChildProcess>(ChildProcess::Options{
        .command = {"gst-launch-1.0", "--quiet", "pipewiresrc", "path=" + std::to_string(stream->node()), "!",
                    "video/x-raw,max-framerate=15/1", "!", "videoscale", "method=bilinear2", "!",
                    "video/x-raw,width=" + std::to_string(panelWidth) +
                        ",height=" + std::to_string(panelHeight),
                    "!", "videoconvert", "!", "ximagesink"},
        .environment = session.with(sandbox.environment())});
}

Cost PlasmaDesktop::costDuring(std::chrono::seconds time, pid_t program) const {
    std::this_thread::sleep_for(std::chrono::seconds(1));
    const auto start = Clock::now();
    const Cost before = usedSoFar(program);
    std::this_thread::sleep_for(time);
    const Cost used = usedSoFar(program).above(before);
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    return {used.program / seconds, used.compositor / seconds, used.server / seconds};
}

double PlasmaDesktop::peakMemoryOf(pid_t program) const {
    return peakMemory(program);
}

xcb_window_t PlasmaDesktop::panelOf(const Program& program) const {
    return program.panel(facts).value_or(XCB_NONE);
}

xcb_window_t PlasmaDesktop::windowOfGStreamer() const {
    xcb_window_t found = XCB_NONE;
    require("GStreamer shows its window", [&] {
        for (const auto each : facts.clientList())
            if (const Box box = facts.box(each); box.width == panelWidth && box.height == panelHeight)
                found = each;
        return found != XCB_NONE;
    });
    return found;
}

double PlasmaDesktop::framesPerSecond(xcb_window_t small) const {
    constexpr std::chrono::seconds time{2};
    const auto start = Clock::now();
    int frames = 0;
    for (std::string before; Clock::now() - start < time;) {
        auto now = pixelsOf(client, small, {0, 0, panelWidth, panelHeight});
        frames += !before.empty() && now != before ? 1 : 0;
        before = std::move(now);
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return frames / std::chrono::duration<double>(time).count();
}

double PlasmaDesktop::latency(const Program& program) const {
    constexpr int changes = 11;
    const auto panel = program.panel(facts).value_or(XCB_NONE);
    Series times;
    for (int change = 0; change < changes; ++change) {
        const bool isRed = change % 2 == 0;
        const auto start = Clock::now();
        window.tell(isRed ? "colour c02020" : "colour 2020c0");
        while (middleOf(client, panel) != (isRed ? 0xc02020U : 0x2020c0U) && Clock::now() - start < patience)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        times.add(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
        std::this_thread::sleep_for(std::chrono::milliseconds(137)); // Is out of step with the ticks.
    }
    return times.median();
}

Cost PlasmaDesktop::usedSoFar(pid_t program) const {
    return {program > 0 ? processorTime(program) : 0, processorTime(session.compositor()),
            processorTime(xwayland())};
}

/// Returns the process of XWayland, which is a child of KWin.
pid_t PlasmaDesktop::xwayland() const {
    const auto threads = "/proc/" + std::to_string(session.compositor()) + "/task";
    for (const auto& thread : std::filesystem::directory_iterator(threads)) {
        std::ifstream children(thread.path() / "children");
        for (pid_t child = 0; children >> child;)
            if (Sandbox::read("/proc/" + std::to_string(child) + "/comm") == "Xwayland\n")
                return child;
    }
    throw HarnessError("KWin has not started XWayland");
}

} // namespace mirrolet::bench
