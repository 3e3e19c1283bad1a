// Tests Mirrolet during a call in a session with the standard protocols. The call is a window of a scripted
// compositor, and Mirrolet shows its own windows on an X server, which takes the place of XWayland.

#include "tests/desktop/endtoend/EndToEndTest.h"
#include "tests/desktop/harness/Wait.h"
#include "tests/desktop/harness/ext/ScriptedCompositor.h"

namespace mirrolet {
namespace {

using namespace harness;

class ExtCallTest : public EndToEndTest {
  protected:
    void start() {
        program = std::make_unique<Program>(
            &server, &bus,
            Program::Options{.defaults = Program::defaults(),
                             .environment = {{"WAYLAND_DISPLAY", compositor.socket()}}});
    }
    void paint(std::size_t window, std::uint32_t colour) {
        compositor.paint(window, {0, 0, 400, 400}, colour);
    }
    /// Waits until the middle of the mirror has the colour.
    void awaitMiddle(xcb_window_t panel, std::uint32_t colour) {
        require("the mirror shows the window", [&] { return isNear(centreOf(panel), colour); });
    }

    ScriptedCompositor compositor;
};

TEST_F(ExtCallTest, IsOfferedMirroredLiveAndEnds) {
    compositor.open({.title = "Notes", .application = "Notes", .states = ScriptedCompositor::activated});
    start();
    EXPECT_TRUE(nothingAppears());
    EXPECT_THAT(program->log(), testing::HasSubstr("found a Wayland session with the standard protocols"));
    const auto call = compositor.open({});
    paint(call, blue);
    awaitPrompt();
    keyboard.stroke({key::returnKey});
    const auto panel = awaitPanel();
    awaitMiddle(panel, blue);
    for (const auto colour : {green, orange}) {
        paint(call, colour);
        awaitMiddle(panel, colour);
    }
    compositor.setStates(call, ScriptedCompositor::minimized);
    paint(call, blue);
    awaitMiddle(panel, blue);
    compositor.close(call);
    awaitNothing();
    EXPECT_TRUE(nothingAppears());
}

} // namespace
} // namespace mirrolet
