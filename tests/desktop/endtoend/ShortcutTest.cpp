#include "tests/desktop/endtoend/EndToEndTest.h"

namespace mirrolet {
namespace {

using namespace harness;

struct Keys {
    const char* name;
    std::vector<int> locks;
    const char* layout;
};

void PrintTo(const Keys& keys, std::ostream* out) {
    *out << keys.name;
}

class ShortcutTest : public EndToEndTest {};
class ShortcutTestOfKeys : public EndToEndTest, public testing::WithParamInterface<Keys> {};

TEST_P(ShortcutTestOfKeys, OpenHideShowAndCloseTheMirror) {
    keyboard.setLayout(GetParam().layout);
    for (const int lock : GetParam().locks)
        keyboard.stroke({lock});
    startQuiet();
    const auto call = showCall();
    giveFocusTo(*call);

    pressFrontmostShortcut();
    const xcb_window_t panel = awaitPanel();
    EXPECT_EQ(facts.focus(), call->window());
    pressVisibilityShortcut();
    awaitNothing();
    pressVisibilityShortcut();
    EXPECT_EQ(awaitPanel(), panel);
    pressFrontmostShortcut();
    awaitNothing();
    EXPECT_THAT(call->keys(), testing::Not(testing::Contains("key 41 press"))); // F was part of the shortcut.
}

INSTANTIATE_TEST_SUITE_P(Keys, ShortcutTestOfKeys,
                         testing::Values(Keys{"NoLock", {}, "us"}, Keys{"NumLock", {key::numLock}, "us"},
                                         Keys{"CapsLock", {key::capsLock}, "us"},
                                         Keys{"BothLocks", {key::numLock, key::capsLock}, "us"},
                                         Keys{"RussianLayout", {}, "ru"}),
                         [](const auto& each) { return each.param.name; });

TEST_F(ShortcutTest, FollowALayoutThatChangesWhileItRuns) {
    startQuiet();
    const auto call = showCall();
    giveFocusTo(*call);
    keyboard.setLayout("de");
    keyboard.stroke({key::numLock});
    pressFrontmostShortcut();
    awaitPanel();
}

TEST_F(ShortcutTest, ThatAreTakenAreLoggedAndTheOthersWork) {
    const auto code = static_cast<xcb_keycode_t>(key::f + 8);
    XClient rival(server);
    xcb_grab_key(rival.xcb(), 0, rival.root(), XCB_MOD_MASK_ANY, code, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    rival.sync();
    start();
    const auto call = showCall();
    require("the program says that the shortcut is taken", [this] {
        return program->log().find("HotkeyManager: RegisterEventHotKey failed") != std::string::npos;
    });
    awaitPrompt();
    keyboard.stroke({key::returnKey});
    awaitPanel();
    pressVisibilityShortcut();
    awaitNothing();
}

TEST_F(ShortcutTest, MirrorTheLargestWindowOfTheFrontmostApplication) {
    startQuiet();
    const auto other =
        showWindow({.title = "Mail", .wmClass = "Mail", .place = {60, 80, 900, 600}, .colour = "20a040"});
    const auto call = showWindow({.place = {60, 80, 300, 300}, .colour = colourName(blue)});
    giveFocusTo(*call);
    pressFrontmostShortcut();
    awaitColour(awaitPanel(), blue);
    pressFrontmostShortcut();
    awaitNothing();

    giveFocusTo(*other);
    pressFrontmostShortcut();
    awaitColour(awaitPanel(), green);
}

} // namespace
} // namespace mirrolet
