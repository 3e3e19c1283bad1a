#include "tests/desktop/endtoend/EndToEndTest.h"
#include "tests/desktop/harness/DesktopServices.h"

#include <algorithm>
#include <functional>

namespace mirrolet {
namespace {

using namespace harness;

class PanelTest : public EndToEndTest {
  protected:
    /// Drags in four steps. Waits after each step until the panel has followed the pointer. Without the wait,
    /// the program could handle several steps as one, and the test would not notice a panel that moves too
    /// far in each step.
    void dragInSteps(int x, int y, int dx, int dy, const std::function<Box(int dx, int dy)>& expected) {
        pointer.move(x, y);
        pointer.press();
        for (int step = 1; step <= 4; ++step) {
            pointer.move(x + dx * step / 4, y + dy * step / 4);
            require("the panel follows the pointer", [&] {
                return facts.box(*program->panel(facts)) == expected(dx * step / 4, dy * step / 4);
            });
        }
        pointer.release();
    }
};

TEST_F(PanelTest, IsMovedByItsBodyAndResizedByItsGripAndShowsTheWholeSource) {
    startQuiet();
    const auto call = showCall();
    const xcb_window_t panel = openMirror(*call);
    dragInSteps(1200, 720, -600, -420, [](int dx, int dy) { return Box{1156 + dx, 676 + dy, 100, 100}; });
    for (const auto& [dx, dy] : {std::pair(220, 100), std::pair(-41, 61), std::pair(-500, -500)}) {
        const Box before = facts.box(panel);
        dragInSteps(before.x + before.width - 6, before.y + before.height - 6, dx, dy, [&](int x, int y) {
            return Box{before.x, before.y, std::max(before.width + x, 50), std::max(before.height + y, 50)};
        });
        awaitColour(panel, blue);
    }
    EXPECT_EQ(facts.focus(), call->window());
}

TEST_F(PanelTest, LeavesItsSessionBehindWhenItsCloseButtonIsPressed) {
    start();
    const auto editor = showWindow(
        {.title = "Notes", .wmClass = "Editor", .place = {60, 80, 400, 400}, .colour = quarters(green)});
    const xcb_window_t panel = openMirror(*editor, green);
    clickCloseButton(panel);
    awaitNothing();

    // The session goes on after its panel is closed, so the program does not offer the call.
    auto call = showCall();
    EXPECT_TRUE(nothingAppears());
    call.reset();
    ASSERT_TRUE(nothingAppears());
    call = showCall();
    awaitPrompt();
}

TEST_F(PanelTest, HasRoundCornersLikeThePromptAndAShadowUnderACompositingManager) {
    // The background is a window, because a compositing manager does not show the colour of the root window.
    const CallWindow ground(
        server,
        {.wmClass = "Ground", .place = {0, 0, 1280, 800}, .colour = "e08020", .overrideRedirect = true});
    start(R"("promptTimeout": 600)");
    // Returns whether the round corner shows the orange window behind, even under a shadow.
    const auto isRound = [this](const Box& box) {
        const int right = box.x + box.width - 1;
        const auto isOrange = [](std::uint32_t pixel) { return pixel >> 16 > 0x80 && (pixel & 0xff) < 0x40; };
        return isOrange(facts.pixel(right, box.y)) && isOrange(facts.pixel(right - 2, box.y + 1));
    };
    const auto throwsShadow = [this](const Box& box) {
        const auto below = facts.pixel(box.x + box.width / 2, box.y + box.height + 4);
        return below >> 16 > 0x80 && !isNear(below, orange);
    };
    const auto call = showCall();
    const auto looks = [&](const Box& box, const char* window) {
        SCOPED_TRACE(window);
        EXPECT_TRUE(waitUntil([&] { return isRound(box) && !throwsShadow(box); })) << "at the start, without";
        const Picom compositor(server);
        EXPECT_TRUE(waitUntil([&] { return isRound(box) && throwsShadow(box); })) << "with";
    };
    looks(facts.box(awaitPrompt()), "the prompt");
    keyboard.stroke({key::returnKey});
    const xcb_window_t panel = awaitPanel();
    looks(facts.box(panel), "the mirror");
    EXPECT_TRUE(waitUntil([&] { return isRound(facts.box(panel)) && !throwsShadow(facts.box(panel)); }))
        << "without again";
    awaitColour(panel, blue);
}

} // namespace
} // namespace mirrolet
