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
    // The prompt is in the middle, raised by a tenth of the screen's height.
    EXPECT_EQ(box, (Box{460, 240, 360, 160}));
    EXPECT_TRUE(facts.isAbove(prompt, call->window()));

    // Keys go only to the prompt, and the focus goes back after the answer.
    keyboard.stroke({key::escape});
    awaitNothing();
    require("the focus is back", [&] { return facts.focus() == other->window(); });
    EXPECT_THAT(other->keys(), testing::IsEmpty());
}

TEST_F(PromptTest, OpensTheMirrorOnReturnAndTheEndOfTheCallClosesIt) {
    start();
    auto call = showCall();
    awaitPrompt();
    keyboard.stroke({key::returnKey});
    awaitColour(awaitPanel(), blue);
    call.reset();
    awaitNothing();

    // Waits for a poll without a call, because otherwise the next call would count as the same one.
    ASSERT_TRUE(nothingAppears());
    const auto next = showCall(green);
    awaitPrompt();
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
    EXPECT_THAT(notes->keys(), testing::IsEmpty());
}

TEST_F(PromptTest, IsDeclinedByItsTimeOut) {
    start(R"("promptTimeout": 0.5)");
    const auto call = showCall();
    awaitPrompt();
    awaitNothing();
    EXPECT_TRUE(nothingAppears());
    EXPECT_TRUE(program->child().running());
}

TEST_F(PromptTest, GoesWithTheCallThatEndsBeforeAnAnswer) {
    start();
    auto call = showCall();
    awaitPrompt();
    call.reset();
    awaitNothing();
}

TEST_F(PromptTest, AnswersToThePointer) {
    start();
    auto call = showCall();
    struct Row {
        const char* button;
        int x; // In the prompt, whose buttons are side by side in its lower part.
        bool opensMirror;
    };
    for (const Row& row : {Row{"Not Now", 125, false}, Row{"Enable PiP", 230, true}}) {
        SCOPED_TRACE(row.button);
        const Box box = facts.box(awaitPrompt());
        pointer.click(box.x + row.x, box.y + 122);
        if (row.opensMirror)
            awaitPanel();
        else
            awaitNothing();
        call.reset();
        ASSERT_TRUE(row.opensMirror || nothingAppears());
        awaitNothing();
        call = showCall();
    }
}

/// Shows several windows from one process, as a browser does for itself and for its web applications.
TEST_F(PromptTest, IsShownForAWatchedWebApplicationAndNotForTheBrowserBesideIt) {
    const auto showOne = [this](const std::string& instance, std::int16_t side, std::uint32_t colour) {
        const auto window = xcb_generate_id(client.xcb());
        const auto size = static_cast<std::uint16_t>(side);
        xcb_create_window(client.xcb(), XCB_COPY_FROM_PARENT, window, client.root(), 0, 0, size, size, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL, &colour);
        const auto write = [&](const std::string& property, const std::string& text) {
            xcb_change_property(client.xcb(), XCB_PROP_MODE_REPLACE, window, client.atom(property),
                                XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(text.size()), text.data());
        };
        write("WM_CLASS", instance + '\0' + "Google-chrome" + '\0');
        write("WM_NAME", "Video call");
        xcb_map_window(client.xcb(), window);
        client.sync();
    };
    const auto home = std::make_shared<Sandbox>();
    const std::string entry = "[Desktop Entry]\nType=Application\nName=Any\nExec=google-chrome";
    home->write("data/applications/google-chrome.desktop", entry + "\n");
    for (const std::string id : {"aaa", "bbb"})
        home->write("data/applications/chrome-" + id + "-Default.desktop",
                    entry + " --app-id=" + id + "\nStartupWMClass=crx_" + id + "\n");
    const auto defaults = Program::defaults(R"("selectedAppIdentifiers": ["chrome-aaa-Default"])");
    program = std::make_unique<Program>(&server, &bus, Program::Options{.defaults = defaults, .home = home});
    require("the program takes its shortcuts", [this] { return isGrabbed(key::f); });

    showOne("google-chrome", 600, green);
    showOne("crx_bbb", 500, orange);
    EXPECT_TRUE(nothingAppears());
    showOne("crx_aaa", 300, blue);
    awaitPrompt();
    keyboard.stroke({key::returnKey});
    awaitColour(awaitPanel(), blue);
}

} // namespace
} // namespace mirrolet
