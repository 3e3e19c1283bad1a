#include "tests/desktop/endtoend/EndToEndTest.h"
#include "tests/desktop/harness/DesktopServices.h"

namespace mirrolet {
namespace {

using namespace harness;

class PanelTest : public EndToEndTest {};

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
