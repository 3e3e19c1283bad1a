#include "bench/program/Desktop.h"

#include "tests/desktop/harness/Wait.h"

namespace mirrolet::bench {

using namespace harness;

namespace {

constexpr int awayFromEverything = 2;
// The distance in pixels from the panel's lower right corner to a place on the grip.
constexpr int insideTheGrip = 6;
constexpr Box room{1340, 600, 0, 0};

} // namespace

Desktop::Desktop() {
    pointer.move(awayFromEverything, awayFromEverything);
}

std::unique_ptr<Program> Desktop::start(double pollInterval) const {
    const auto defaults = R"({"pollInterval": )" + std::to_string(pollInterval) + "}";
    return std::make_unique<Program>(&server, &bus, Program::Options{.defaults = defaults});
}

std::unique_ptr<CallWindow> Desktop::showCall(int framesPerSecond) const {
    CallWindow::Options options;
    options.place = {20, 250, 1280, 800};
    options.rate = framesPerSecond;
    return std::make_unique<CallWindow>(server, options);
}

xcb_window_t Desktop::acceptPrompt(const Program& program) {
    program.awaitPrompt(facts);
    Keyboard(client).stroke({key::returnKey});
    require("Return opens the mirror", [&] { return !program.prompt(facts) && program.panel(facts); });
    return program.panel(facts).value_or(XCB_NONE);
}

void Desktop::resize(xcb_window_t panel, int width, int height) {
    const Box small = facts.box(panel);
    pointer.drag(small.x + small.width / 2, small.y + small.height / 2, room.x + small.width / 2,
                 room.y + small.height / 2);
    require("the mirror follows the pointer", [&] { return facts.box(panel).y == room.y; });
    const int x = room.x + small.width - insideTheGrip;
    const int y = room.y + small.height - insideTheGrip;
    pointer.drag(x, y, x + width - small.width, y + height - small.height);
    require("the grip gives the mirror its size",
            [&] { return facts.box(panel).width == width && facts.box(panel).height == height; });
    pointer.move(awayFromEverything, awayFromEverything);
}

} // namespace mirrolet::bench
