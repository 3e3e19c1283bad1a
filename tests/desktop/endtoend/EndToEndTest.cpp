#include "tests/desktop/endtoend/EndToEndTest.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace mirrolet {

using namespace harness;

namespace {

// The coordinates x and y of a place that no window covers.
constexpr int cornerOfScreen = 2;

/// Returns the colours of a window's four quarters, which are `colour` and three others that are made from
/// it.
std::array<std::uint32_t, 4> fourOf(std::uint32_t colour) {
    const auto turned = [colour](unsigned bits) {
        return (colour << bits | colour >> (24 - bits)) & 0xffffff;
    };
    return {colour, turned(8), turned(16), colour ^ 0xffffff};
}

/// Returns whether the border, a round corner, the close button or the grip may hide the picture at (x, y).
/// `width` and `height` are those of the panel.
bool isOverlaid(double x, double y, double width, double height) {
    const auto isInCorner = [](double dx, double dy, int side) { return dx < side && dy < side; };
    return std::min({x, y, width - x, height - y}) < 2 || isInCorner(x, y, 28) ||
           isInCorner(width - x, y, 10) || isInCorner(x, height - y, 10) ||
           isInCorner(width - x, height - y, 24);
}

} // namespace

EndToEndTest::EndToEndTest(WindowManagerKind kind, const XServer::Options& screen)
    : AnyDesktopTest(std::make_unique<X11TestDesktop>(kind, screen)) {}

std::unique_ptr<CallWindow> EndToEndTest::showWindow(const CallWindow::Options& options) {
    auto window = std::make_unique<CallWindow>(server, options);
    giveFocusTo(*window);
    return window;
}

std::unique_ptr<CallWindow> EndToEndTest::showCall(std::uint32_t colour) {
    CallWindow::Options options;
    options.colour = quarters(colour);
    // The window is square, so that its picture fills the square panel.
    options.place = {60, 80, 400, 400};
    auto call = std::make_unique<CallWindow>(server, options);
    source = call->window();
    return call;
}

void EndToEndTest::giveFocusTo(const CallWindow& window) {
    commands.activate(window.window());
    // The window manager announces the active window a moment after the focus has changed. Until then the
    // shortcut would mirror the window that had the focus before.
    require("the window has the focus",
            [&] { return facts.focus() == window.window() && facts.active() == window.window(); });
}

xcb_window_t EndToEndTest::openMirror(const CallWindow& call, std::uint32_t colour) {
    giveFocusTo(call);
    source = call.window();
    pressFrontmostShortcut();
    const xcb_window_t panel = awaitPanel();
    awaitColour(panel, colour);
    return panel;
}

std::uint32_t EndToEndTest::centreOf(xcb_window_t window) const {
    const Box box = facts.box(window);
    return facts.pixel(box.x + box.width / 2, box.y + box.height / 2);
}

void EndToEndTest::awaitColour(xcb_window_t panel, std::uint32_t colour) {
    require("the mirror shows " + quarters(colour), [&] { return shows(panel, colour); });
}

bool EndToEndTest::shows(xcb_window_t panel, std::uint32_t colour) const {
    const Box window = facts.box(source);
    const Box box = facts.box(panel);
    const Picture seen = facts.screenshot(box);
    const double points = program->pixelsPerPoint();
    const double shape = window.width == 0 ? 1 : static_cast<double>(window.width) / window.height;
    const double halfWidth = std::min<double>(box.width, box.height * shape) / 2;
    const double halfHeight = std::min<double>(box.height, box.width / shape) / 2;
    for (int i = 0; i < box.width * box.height; ++i) {
        const double x = i % box.width + 0.5;
        const double y = i / box.width + 0.5;
        const double right = x - box.width / 2.0; // Counted from the middle of the picture.
        const double down = y - box.height / 2.0;
        const double toEdge =
            std::min({std::abs(right), std::abs(down), std::abs(std::abs(right) - halfWidth),
                      std::abs(std::abs(down) - halfHeight)});
        // Skips a pixel where two colours meet, because scaling mixes them there. Also skips a pixel that the
        // overlay may hide.
        if (toEdge < 1.1 || isOverlaid(x / points, y / points, box.width / points, box.height / points))
            continue;
        const bool isPicture = std::abs(right) < halfWidth && std::abs(down) < halfHeight;
        if (!isNear(seen.at(i % box.width, i / box.width),
                    isPicture ? fourOf(colour).at((right > 0) + 2 * (down > 0)) : 0))
            return false;
    }
    return box.width > 0;
}

void EndToEndTest::clickCloseButton(xcb_window_t panel) {
    const Box box = facts.box(panel);
    const int x = box.x + 18;
    const int y = box.y + 18;
    pointer.move(x, y);
    // The first pixel belongs to the red disc of the close button, and the second to the white cross in it.
    require("the close button is there", [&] {
        const auto disc = facts.pixel(x - 7, y);
        return disc >> 16 > 0xc0 && (disc >> 8 & 0xff) < 0x60 && isNear(facts.pixel(x, y), 0xffffff);
    });
    pointer.click(x, y);
    pointer.move(cornerOfScreen, cornerOfScreen);
}

std::string EndToEndTest::quarters(std::uint32_t colour) {
    return colourNames(fourOf(colour));
}

} // namespace mirrolet
