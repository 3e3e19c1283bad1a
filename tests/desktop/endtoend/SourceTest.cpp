#include "tests/desktop/endtoend/EndToEndTest.h"

#include <functional>

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

TEST_F(SourceTest, LeavesItsLastPictureWhileItIsHiddenAndLivesOnAfterwards) {
    commands.setDesktopCount(2);
    const std::pair<const char*, std::function<void(bool isHidden)>> ways[] = {
        {"minimized",
         [this](bool isHidden) {
             isHidden ? commands.minimize(call->window()) : commands.activate(call->window());
         }},
        {"on another desktop", [this](bool isHidden) { commands.switchToDesktop(isHidden ? 1 : 0); }},
    };
    for (const auto& [where, hide] : ways) {
        SCOPED_TRACE(where);
        paint(*call, blue);
        awaitColour(panel, blue);
        hide(true);
        require("the source is out of sight", [&] { return !facts.viewable(call->window()); });
        EXPECT_TRUE(holdsFor([&] { return shows(panel, blue); }, std::chrono::milliseconds(400)));
        hide(false);
        require("the source is back", [&] { return facts.viewable(call->window()); });
        paint(*call, green);
        awaitColour(panel, green);
    }
}

} // namespace
} // namespace mirrolet
