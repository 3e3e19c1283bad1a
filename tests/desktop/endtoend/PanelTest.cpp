#include "tests/desktop/endtoend/EndToEndTest.h"
#include "tests/desktop/harness/DesktopServices.h"

namespace mirrolet {
namespace {

using namespace harness;

class PanelTest : public EndToEndTest {};

TEST_F(PanelTest, StandsInTheCornerThatTheSettingsSay) {
    struct Row {
        const char* corner;
        Box box;
    };
    const auto call = showCall();
    for (const Row& row : {Row{"bottomRight", {1156, 676, 100, 100}}, Row{"bottomLeft", {24, 676, 100, 100}},
                           Row{"topRight", {1156, 24, 100, 100}}, Row{"topLeft", {24, 24, 100, 100}}}) {
        SCOPED_TRACE(row.corner);
        startQuiet(R"("pipCorner": ")" + std::string(row.corner) + '"');
        EXPECT_EQ(facts.box(openMirror(*call)), row.box);
        program.reset();
    }
}

TEST_F(PanelTest, IsMovedByItsBodyAndResizedByItsGrip) {
    startQuiet();
    const auto call = showCall();
    const xcb_window_t panel = openMirror(*call);
    pointer.drag(1200, 720, 600, 300);
    EXPECT_TRUE(waitUntil([&] { return facts.box(panel) == Box{556, 256, 100, 100}; }));

    struct Row {
        int dx, dy;
        Box box;
    };
    for (const Row& row : {Row{220, 100, {556, 256, 320, 200}}, Row{-40, 60, {556, 256, 280, 260}},
                           Row{-500, -500, {556, 256, 50, 50}}}) {
        const Box now = facts.box(panel);
        const int x = now.x + now.width - 6;
        const int y = now.y + now.height - 6;
        pointer.drag(x, y, x + row.dx, y + row.dy);
        EXPECT_TRUE(waitUntil([&] { return facts.box(panel) == row.box; })) << row.dx << ' ' << row.dy;
        EXPECT_TRUE(waitUntil([&] { return isNear(centreOf(panel), blue); }));
    }
    EXPECT_EQ(facts.focus(), call->window());
}

TEST_F(PanelTest, LeavesItsSessionBehindWhenItsCloseButtonIsPressed) {
    start();
    const auto editor = showWindow({.title = "Notes", .wmClass = "Editor", .colour = colourName(green)});
    const xcb_window_t panel = openMirror(*editor, green);
    clickCloseButton(panel);
    awaitNothing();

    // The session goes on without a panel, so the call is not offered again.
    auto call = showCall();
    EXPECT_TRUE(nothingAppears());
    call.reset();
    ASSERT_TRUE(nothingAppears());
    call = showCall();
    awaitPrompt();
}

TEST_F(PanelTest, HasRoundCornersWithAndWithoutACompositingManager) {
    // A window fills the screen, because a compositing manager does not show the root window's colour.
    CallWindow::Options everywhere;
    everywhere.colour = colourName(orange);
    everywhere.place = {0, 0, 1280, 800};
    everywhere.overrideRedirect = true;
    const CallWindow ground(server, everywhere);
    startQuiet();
    const auto call = showCall();
    const Box box = facts.box(openMirror(*call));
    // The panel's corner shows the window behind, with or without a shadow.
    const auto isRound = [&] { return facts.pixel(box.x, box.y) >> 16 > 0x80; };
    EXPECT_TRUE(waitUntil(isRound)) << "at the start, without";
    auto compositor = std::make_unique<Picom>(server);
    EXPECT_TRUE(waitUntil(isRound)) << "with";
    compositor.reset();
    EXPECT_TRUE(waitUntil(isRound)) << "without again";
    EXPECT_TRUE(waitUntil([&] { return isNear(facts.pixel(box.x + 50, box.y + 50), blue); }));
}

} // namespace
} // namespace mirrolet
