#include "tests/desktop/endtoend/EndToEndTest.h"

namespace mirrolet {
namespace {

using namespace harness;

class PromptTest : public EndToEndTest {};

TEST_F(PromptTest, IsShownForACallAndTakesOnlyTheFocus) {
    start();
    const auto other = showWindow({.title = "Notes", .wmClass = "Editor"});
    const auto call = showCall();
    giveFocusTo(*other);
    const xcb_window_t prompt = awaitPrompt();
    const Box box = facts.box(prompt);
    // The prompt is in the middle of the screen, but higher by a tenth of the screen's height.
    EXPECT_EQ(box, (Box{460, 240, 360, 160}));
    EXPECT_TRUE(facts.isAbove(prompt, call->window()));

    // Keys go only to the prompt. After the answer the focus goes back.
    keyboard.stroke({key::escape});
    awaitNothing();
    require("the focus is back", [&] { return facts.focus() == other->window(); });
    EXPECT_THAT(other->keys(), testing::Not(testing::Contains(testing::EndsWith("press"))));
}

TEST_F(PromptTest, HasTheKeysAgainAfterAClickOnIt) {
    start();
    const auto notes = showWindow({.title = "Notes", .wmClass = "Editor", .place = {60, 450, 300, 200}});
    const auto call = showCall();
    const Box box = facts.box(awaitPrompt());
    pointer.click(200, 550);
    require("the other window has the focus", [&] { return facts.focus() == notes->window(); });
    pointer.click(box.x + box.width / 2, box.y + 30);
    require("the prompt has the focus", [this] { return facts.focus() == program->prompt(facts); });
    keyboard.stroke({key::returnKey});
    awaitColour(awaitPanel(), blue);
    EXPECT_TRUE(waitUntil([&] { return facts.focus() == notes->window(); }));
    EXPECT_THAT(notes->keys(), testing::Not(testing::Contains(testing::EndsWith("press"))));
}

} // namespace
} // namespace mirrolet
