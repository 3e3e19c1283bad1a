#include "tests/desktop/endtoend/EndToEndTest.h"

namespace mirrolet {
namespace {

using namespace harness;

class SourceTest : public EndToEndTest {
  protected:
    void SetUp() override {
        startQuiet();
        call = showCall();
        panel = openMirror(*call);
    }

    std::unique_ptr<CallWindow> call;
    xcb_window_t panel = XCB_NONE;
};

TEST_F(SourceTest, IsMirroredWhileItIsObscured) {
    const auto cover = showWindow({.title = "Notes", .wmClass = "Editor", .place = {10, 10, 900, 600}});
    require("the source is obscured", [&] { return facts.isAbove(cover->window(), call->window()); });
    call->tell("colour " + colourName(green));
    awaitColour(panel, green);
}

TEST_F(SourceTest, KeepsItsProportionsWhenItIsResized) {
    call->tell("resize 200 400");
    call->tell("colour " + colourName(green));
    awaitColour(panel, green);
    const Box box = facts.box(panel);
    EXPECT_EQ(box.width, 100);
    // The source is half as wide as high, so the panel is black at both sides.
    for (const int x : {12, 88})
        EXPECT_TRUE(waitUntil([&] { return facts.pixel(box.x + x, box.y + 50) == 0; })) << x;
    EXPECT_TRUE(isNear(facts.pixel(box.x + 30, box.y + 50), green));
    EXPECT_TRUE(isNear(facts.pixel(box.x + 70, box.y + 50), green));
}

TEST_F(SourceTest, LeavesItsLastPictureWhileItIsMinimizedAndLivesOnAfterwards) {
    commands.minimize(call->window());
    require("the source is minimized", [&] { return !facts.viewable(call->window()); });
    EXPECT_TRUE(holdsFor([&] { return isNear(centreOf(panel), blue); }, std::chrono::milliseconds(400)));
    commands.activate(call->window());
    require("the source is back", [&] { return facts.viewable(call->window()); });
    call->tell("colour " + colourName(green));
    awaitColour(panel, green);
}

TEST_F(SourceTest, LeavesItsLastPictureWhileItIsOnAnotherDesktopAndLivesOnAfterwards) {
    commands.setDesktopCount(2);
    commands.switchToDesktop(1);
    require("the source is out of sight", [&] { return !facts.viewable(call->window()); });
    EXPECT_TRUE(holdsFor([&] { return isNear(centreOf(panel), blue); }, std::chrono::milliseconds(400)));
    commands.switchToDesktop(0);
    require("the source is back", [&] { return facts.viewable(call->window()); });
    call->tell("colour " + colourName(green));
    awaitColour(panel, green);
}

TEST_F(SourceTest, ClosesTheMirrorWhenItIsDestroyed) {
    using namespace std::chrono;
    const auto from = steady_clock::now();
    call->tell("quit");
    awaitNothing();
    // The limit allows a few ticks of the mirror, and time for a loaded machine.
    EXPECT_LT(duration_cast<milliseconds>(steady_clock::now() - from).count(), 2000);
    // The session has ended, so one press opens the next session.
    call = showCall(green);
    openMirror(*call, green);
}

TEST_F(SourceTest, ClosesTheMirrorWhenItsProgramIsKilled) {
    call->kill();
    awaitNothing();
    EXPECT_TRUE(program->child().running());
}

} // namespace
} // namespace mirrolet
