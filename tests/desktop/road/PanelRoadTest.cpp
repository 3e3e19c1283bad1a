#include "tests/desktop/harness/DesktopServices.h"
#include "tests/desktop/road/RoadTest.h"

namespace mirrolet {
namespace {

using namespace harness;

class APanel : public RoadTest {};

TEST_F(APanel, StandsInTheCornerThatTheSettingsSay) {
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

TEST_F(APanel, IsMovedByItsBodyAndResizedByItsGrip) {
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

TEST_F(APanel, LeavesItsSessionBehindWhenItsCloseButtonIsPressed) {
    start();
    const auto editor = showWindow({.title = "Notes", .wmClass = "Editor", .colour = colourName(green)});
    const xcb_window_t panel = openMirror(*editor, green);
    clickCloseButton(panel);
    awaitNothing();

    // The session goes on without a panel: no prompt for a call, until the call has ended.
    auto call = showCall();
    EXPECT_TRUE(nothingAppears());
    call.reset();
    ASSERT_TRUE(nothingAppears());
    call = showCall();
    awaitPrompt();
}

TEST_F(APanel, ThatWasClosedTakesOnePressToForgetAndOneToOpenAgain) {
    startQuiet();
    const auto call = showCall();
    clickCloseButton(openMirror(*call));
    awaitNothing();
    pressVisibilityShortcut();
    EXPECT_TRUE(nothingAppears());
    pressFrontmostShortcut();
    EXPECT_TRUE(nothingAppears());
    pressFrontmostShortcut();
    awaitPanel();
}

TEST_F(APanel, HasRoundCornersWithAndWithoutACompositingManager) {
    // A plain colour of the root window is not shown by a compositing manager.
    CallWindow::Options everywhere;
    everywhere.colour = colourName(orange);
    everywhere.width = 1280;
    everywhere.height = 800;
    everywhere.x = everywhere.y = 0;
    everywhere.overrideRedirect = true;
    const CallWindow ground(server, everywhere);
    startQuiet();
    const auto call = showCall();
    const Box box = facts.box(openMirror(*call));
    // The ground, or that with a shadow on it.
    const auto isRound = [&] { return facts.pixel(box.x, box.y) >> 16 > 0x80; };
    EXPECT_TRUE(waitUntil(isRound)) << "at the start, without";
    auto compositor = std::make_unique<Picom>(server);
    EXPECT_TRUE(waitUntil(isRound)) << "with";
    compositor.reset();
    EXPECT_TRUE(waitUntil(isRound)) << "without again";
    EXPECT_TRUE(waitUntil([&] { return isNear(facts.pixel(box.x + 50, box.y + 50), blue); }));
}

class APanelUnder : public RoadTest, public testing::WithParamInterface<WindowManagerKind> {
  protected:
    APanelUnder() : RoadTest(GetParam()) {}
};

TEST_P(APanelUnder, FloatsAboveAFullScreenWindowOnEveryDesktopAndInNoTaskList) {
    startQuiet();
    const auto call = showWindow({.title = "Presentation",
                                  .wmClass = "Slides",
                                  .colour = colourName(green),
                                  .states = {"_NET_WM_STATE_FULLSCREEN"}});
    require("the window fills the screen", [&] { return facts.box(call->window()) == Box{0, 0, 1280, 800}; });
    const xcb_window_t panel = openMirror(*call, green);
    EXPECT_TRUE(facts.isAbove(panel, call->window()));
    EXPECT_EQ(facts.focus(), call->window());
    giveKeyboardTo(*call);
    EXPECT_TRUE(waitUntil([&] { return facts.isAbove(panel, call->window()); }));
    const auto listed = facts.clientList();
    EXPECT_TRUE(!testing::Value(listed, testing::Contains(panel)) ||
                facts.hasState(panel, "_NET_WM_STATE_SKIP_TASKBAR"));

    if (GetParam() == WindowManagerKind::i3)
        return; // Makes desktops only by its own commands.
    commands.setDesktopCount(2);
    commands.switchToDesktop(1);
    require("the other desktop is shown", [&] {
        return facts.numbers(client.root(), "_NET_CURRENT_DESKTOP") == std::vector<std::uint32_t>{1};
    });
    EXPECT_TRUE(facts.viewable(panel));
}

TEST_P(APanelUnder, StandsAmongOrdinaryWindowsWhenItShallNotFloat) {
    if (GetParam() == WindowManagerKind::i3)
        return; // Tiles the others and keeps every floating window above them.
    startQuiet(R"("pipAlwaysOnTop": false)");
    const auto call = showCall();
    const xcb_window_t panel = openMirror(*call);
    EXPECT_EQ(facts.focus(), call->window());
    const auto other = showWindow({.title = "Notes", .wmClass = "Editor", .width = 1200, .height = 700});
    EXPECT_TRUE(waitUntil([&] { return facts.isAbove(other->window(), panel); }));
}

TEST_P(APanelUnder, FollowsThePromptThatHadTheKeyboard) {
    start();
    const auto call = showCall();
    awaitPrompt();
    keyboard.stroke({key::returnKey});
    const xcb_window_t panel = awaitPanel();
    EXPECT_TRUE(facts.isAbove(panel, call->window()));
    EXPECT_TRUE(waitUntil([&] { return facts.focus() == call->window(); }));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, APanelUnder,
                         testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4,
                                         WindowManagerKind::i3),
                         [](const auto& each) { return WindowManager::name(each.param); });

} // namespace
} // namespace mirrolet
