#include "tests/desktop/harness/CallWindow.h"
#include "tests/desktop/harness/DesktopServices.h"
#include "tests/desktop/harness/Keyboard.h"
#include "tests/desktop/harness/Pointer.h"
#include "tests/desktop/harness/SessionBus.h"
#include "tests/desktop/harness/WindowCommands.h"
#include "tests/desktop/harness/WindowFacts.h"
#include "tests/desktop/harness/WindowManager.h"
#include "tests/desktop/harness/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace mirrolet::harness {
namespace {

using testing::ElementsAre;

class EveryWindowManager : public testing::TestWithParam<WindowManagerKind> {};

TEST_P(EveryWindowManager, ManagesAWindowThatSeesKeysAndPointer) {
    const XServer server;
    const SessionBus bus(SessionBus::Services::installed, server.with({}));
    const WindowManager manager(server, GetParam(), &bus);
    XClient client(server);
    const WindowFacts facts(client);
    const CallWindow window(server);

    EXPECT_EQ(facts.process(window.window()), window.pid());
    EXPECT_THAT(facts.windowsOf(window.pid()), ElementsAre(window.window()));
    const Box box = facts.box(window.window());
    Pointer(client).click(box.x + 30, box.y + 30);
    if (GetParam() == WindowManagerKind::none)
        xcb_set_input_focus(client.xcb(), XCB_INPUT_FOCUS_PARENT, window.window(), XCB_CURRENT_TIME);
    require("the window has the keyboard", [&] { return facts.focus() == window.window(); });
    Keyboard(client).stroke({key::a});
    EXPECT_TRUE(waitUntil([&] { return window.keys().size() == 2; }));
    EXPECT_THAT(window.keys(), ElementsAre("key 38 press", "key 38 release"));
    window.tell("colour 2040c0");
    EXPECT_TRUE(waitUntil([&] { return facts.pixel(box.x + 30, box.y + 30) == 0x2040c0; }));
}

INSTANTIATE_TEST_SUITE_P(Harness, EveryWindowManager,
                         testing::Values(WindowManagerKind::none, WindowManagerKind::openbox,
                                         WindowManagerKind::xfwm4, WindowManagerKind::i3,
                                         WindowManagerKind::fluxbox, WindowManagerKind::icewm),
                         [](const auto& each) { return WindowManager::name(each.param); });

TEST(Harness, StandsUpATrayAndACompositingManager) {
    const XServer server;
    EXPECT_NO_THROW(TrayHost{server});
    EXPECT_NO_THROW(Picom{server});
}

TEST(Harness, NamesThePackageOfAMissingProgram) {
    EXPECT_THROW(
        {
            try {
                requireProgram("no-such-program", "its-package");
            } catch (const std::exception& problem) {
                EXPECT_STREQ(problem.what(),
                             "no-such-program is missing: install the Debian package its-package");
                throw;
            }
        },
        std::exception);
}

} // namespace
} // namespace mirrolet::harness
