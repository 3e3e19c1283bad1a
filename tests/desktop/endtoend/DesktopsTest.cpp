#include "tests/desktop/endtoend/EndToEndTest.h"
#include "tests/desktop/harness/HarnessError.h"

#include <cmath>
#include <cstdlib>
#include <fstream>

namespace mirrolet {
namespace {

using namespace harness;

std::vector<WindowManagerKind> windowManagers() {
    using enum WindowManagerKind;
    std::vector kinds{none, openbox, xfwm4, i3, fluxbox, icewm};
    if (std::getenv("MIRROLET_EVERY_WINDOW_MANAGER") != nullptr)
        kinds.insert(kinds.end(), {mutter, kwin, marco});
    return kinds;
}

constexpr auto restTime = std::chrono::milliseconds(600);

/// Runs the prompt and the mirror on one desktop, and writes the results as a row of the table in
/// docs/desktops.md.
class DesktopsTest : public EndToEndTest, public testing::WithParamInterface<WindowManagerKind> {
  protected:
    DesktopsTest() : EndToEndTest(GetParam()) {}

    void TearDown() override {
        if (const char* file = std::getenv("MIRROLET_DESKTOPS_TABLE"); file && !row.empty())
            std::ofstream(file, std::ios::app) << "| " << WindowManager::name(GetParam()) << row << " |\n";
        EndToEndTest::TearDown();
    }

    void note(const std::string& what, const Condition& holds) {
        const bool yes = waitUntil(holds);
        EXPECT_TRUE(yes) << what;
        row += yes ? " | yes" : " | no";
    }

    void giveFocus(const CallWindow& window) {
        // Moves the pointer, because i3 sets the focus with the time of the last input that i3 saw. The
        // server ignores a time that is older than the prompt's.
        pointer.move(300, 300);
        pointer.move(2, 2);
        if (GetParam() != WindowManagerKind::none)
            return giveFocusTo(window);
        xcb_set_input_focus(client.xcb(), XCB_INPUT_FOCUS_PARENT, window.window(), XCB_CURRENT_TIME);
        raise(window);
    }
    void raise(const CallWindow& window) {
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(client.xcb(), window.window(), XCB_CONFIG_WINDOW_STACK_MODE, &above);
        client.sync();
    }

    std::unique_ptr<CallWindow> showFullScreen() {
        CallWindow::Options options{.title = "Slides", .wmClass = "Slides", .colour = colourName(green)};
        options.states = {"_NET_WM_STATE_FULLSCREEN"};
        if (GetParam() == WindowManagerKind::none)
            options.place = {0, 0, 1280, 800};
        auto window = std::make_unique<CallWindow>(server, options);
        giveFocus(*window);
        require("the window fills the screen", [&] {
            return facts.box(window->window()) == Box{0, 0, 1280, 800};
        });
        return window;
    }

    /// Returns false without a window manager, because then there are no desktops.
    bool switchToDesktop(std::uint32_t index) {
        if (GetParam() == WindowManagerKind::none)
            return false;
        if (GetParam() == WindowManagerKind::i3) { // i3 makes a desktop only on a switch to it.
            ChildProcess({.command = {"i3-msg", "workspace", std::to_string(index + 1)},
                          .environment = server.with(Sandbox().environment())})
                .waitForExit();
        } else {
            commands.setDesktopCount(2);
            commands.switchToDesktop(index);
        }
        require("the desktop is shown",
                [&] { return facts.numbers(client.root(), "_NET_CURRENT_DESKTOP") == std::vector{index}; });
        return true;
    }

    bool shows(std::uint32_t colour) { return panel() && isNear(centreOf(*panel()), colour); }
    std::optional<xcb_window_t> panel() { return program->panel(facts); }
    bool focusIsBackAt(const CallWindow& window) {
        return facts.focus() == window.window() &&
               (GetParam() == WindowManagerKind::none || facts.active() == window.window());
    }
    bool isInNoTaskList(xcb_window_t window) {
        return !testing::Value(facts.clientList(), testing::Contains(window)) ||
               facts.hasState(window, "_NET_WM_STATE_SKIP_TASKBAR");
    }

    /// Hides the mirror and shows it again, with presses faster than any window manager answers. `presses` is
    /// odd and counts those before the mirror is shown again.
    void hideAndShow(int presses) {
        for (int times = 0; times < presses; ++times)
            pressVisibilityShortcut();
        // Waits for a while, because the mirror is also hidden between two presses. A press that takes effect
        // later would end the drag that follows.
        require("the last of them has hidden it", [this] { return nothingAppears(); });
        pressVisibilityShortcut();
    }

    std::string row;
};

TEST_P(DesktopsTest, CarriesPromptAndFloatingMirror) {
    start();
    // The window is a dialog, so that it floats under window managers that tile.
    const CallWindow notes(server, {.title = "Notes",
                                    .wmClass = "Editor",
                                    .place = {0, 0, 1270, 780},
                                    .type = "_NET_WM_WINDOW_TYPE_DIALOG"});
    giveFocus(notes);
    auto call = showCall(); // Some window managers give the call the focus.
    const auto isBack = [&] { return focusIsBackAt(notes) || focusIsBackAt(*call); };
    const auto hasFocus = [this] { return program->prompt(facts) == facts.focus(); };
    require("the prompt is there", [this] { return program->prompt(facts).has_value(); });
    note("the prompt has the focus", hasFocus);
    keyboard.stroke({key::escape});
    note("Escape declines and gives it back", [&] { return nothingShown() && isBack(); });
    EXPECT_TRUE(nothingAppears());
    call.reset();
    EXPECT_TRUE(nothingAppears());
    call = showCall();
    require("the second prompt has the focus", hasFocus);
    keyboard.stroke({key::returnKey});
    note("Return opens the mirror and gives it back", [&] { return shows(blue) && isBack(); });

    // The shortcut opens the mirror, without monitoring. With monitoring, the call would count as ended,
    // because i3 unmaps the call behind the full-screen window.
    program.reset();
    startQuiet();
    giveFocus(*call);
    pressFrontmostShortcut();
    awaitPanel();
    giveFocus(notes);
    note("above normal windows",
         [&] { return shows(blue) && facts.isAbove(notes.window(), call->window()); });
    call->tell("colour " + colourName(orange));
    note("the picture of an obscured source is live", [&] { return shows(orange); });
    const auto slides = showFullScreen();
    note("above full-screen windows", [&] { return shows(orange) && facts.focus() == slides->window(); });
    note("in no task list", [&] { return isInNoTaskList(*panel()); });
    if (switchToDesktop(1))
        note("on all desktops", [&] { return shows(orange); });
    else
        row += " | –";
    if (switchToDesktop(0))
        giveFocus(*slides);

    hideAndShow(5);
    note("hidden and shown by its shortcut", [&] { return shows(orange); });
    const xcb_window_t shown = *panel();
    const Box before = facts.box(shown); // The place depends on the window manager, because some have a bar.
    pointer.drag(before.x + 50, before.y + 50, 600, 300);
    require("the panel is where it was dragged to", [&] {
        return facts.box(shown) == Box{550, 250, 100, 100};
    });
    pointer.drag(644, 344, 844, 444);
    note("dragged and resized", [&] { return facts.box(shown) == Box{550, 250, 300, 200} && shows(orange); });
    EXPECT_EQ(facts.focus(), slides->window());
    pressFrontmostShortcut();
    note("closed by the other shortcut", [&] { return nothingShown(); });
}

TEST_P(DesktopsTest, CarriesAMirrorAmongOrdinaryWindows) {
    if (GetParam() == WindowManagerKind::none)
        return;
    startQuiet(R"("pipAlwaysOnTop": false)");
    const Box nearlyAll{60, 80, 1200, 700}; // Reaches under the mirror.
    const auto call = showWindow({.place = nearlyAll, .colour = colourName(blue)});
    openMirror(*call);
    // The mirror is black above and below the picture of a broad window.
    const auto isSeen = [this] {
        const Box box = panel() ? facts.box(*panel()) : Box{};
        return shows(blue) && isNear(facts.pixel(box.x + 50, box.y + 10), 0);
    };
    const auto isAsItShould = [&] {
        return isSeen() && isInNoTaskList(*panel()) && facts.focus() == call->window();
    };
    note("in front without the focus, in no task list", isAsItShould);
    hideAndShow(5);
    note("hidden and shown by its shortcut", isAsItShould);
    if (GetParam() != WindowManagerKind::i3) { // i3 tiles other windows and keeps floating ones above.
        const auto other = showWindow(
            {.title = "Notes", .wmClass = "Editor", .place = nearlyAll, .colour = colourName(green)});
        EXPECT_TRUE(waitUntil([&] { return facts.isAbove(other->window(), *panel()); }));
        hideAndShow(1);
        EXPECT_TRUE(waitUntil(isSeen)) << "in front of another window when shown again";
        EXPECT_EQ(facts.focus(), other->window());
    }
    switchToDesktop(1);
    note("on all desktops", [&] { return shows(blue) && isInNoTaskList(*panel()); });
    row.insert(0, ", not floating");
}

TEST_P(DesktopsTest, KeepsTheMirrorOfACallWhoseWorkspaceIsLeft) {
    if (GetParam() == WindowManagerKind::none)
        return;
    start();
    const auto call = showCall();
    const auto accept = [&] {
        awaitPrompt();
        keyboard.stroke({key::returnKey});
        awaitColour(awaitPanel(), blue);
    };
    const auto isKept = [&](std::uint32_t colour) {
        return holdsFor([&] { return panel() && !program->prompt(facts); }, restTime) && shows(colour);
    };
    accept();
    for (int times = 0; times < 3; ++times) {
        switchToDesktop(1);
        EXPECT_TRUE(isKept(blue));
        switchToDesktop(0);
        EXPECT_TRUE(isKept(blue));
    }
    call->tell("colour " + colourName(orange));
    note("a call on another workspace keeps its mirror, live again on return", [&] { return shows(orange); });

    call->tell("colour " + colourName(blue));
    require("the mirror is live", [&] { return shows(blue); });
    clickCloseButton(*panel());
    awaitNothing();
    switchToDesktop(1);
    EXPECT_TRUE(nothingAppears()) << "a call that is not mirrored has ended";
    switchToDesktop(0);
    accept();

    if (GetParam() == WindowManagerKind::i3) // i3 minimizes nothing.
        return;
    commands.minimize(call->window());
    if (GetParam() == WindowManagerKind::mutter) {
        require("the call is minimized",
                [&] { return facts.hasState(call->window(), "_NET_WM_STATE_HIDDEN"); });
        call->tell("colour " + colourName(orange));
        note("a minimized call", [&] { return shows(orange) && isKept(orange); });
        return;
    }
    note("a minimized call has ended", [&] { return nothingShown(); });
    commands.activate(call->window());
    accept();
}

INSTANTIATE_TEST_SUITE_P(Under, DesktopsTest, testing::ValuesIn(windowManagers()),
                         [](const auto& each) { return WindowManager::name(each.param); });

class DesktopsTestOfOne : public EndToEndTest {
  protected:
    void startWith(const Environment& environment) {
        const auto defaults = Program::defaults(R"("startMonitoringOnLaunch": false)");
        program = std::make_unique<Program>(
            &server, &bus, Program::Options{.defaults = defaults, .environment = environment});
        require("the program takes its shortcuts", [this] { return isGrabbed(key::f); });
    }

    void xrandr(std::vector<std::string> arguments) {
        requireProgram("xrandr", "x11-xserver-utils");
        arguments.insert(arguments.begin(), "xrandr");
        ChildProcess tool({.command = arguments, .environment = server.with(Sandbox().environment())});
        require("xrandr ends well", [&] { return tool.waitForExit() == 0; });
    }
};

TEST_F(DesktopsTestOfOne, IsTheSameAtEveryScaleFactor) {
    const auto call = showCall();
    for (const double scale : {1.25, 1.5, 2.0}) {
        SCOPED_TRACE(scale);
        startWith({{"QT_SCALE_FACTOR", std::to_string(scale)}});
        const xcb_window_t panel = openMirror(*call);
        const int side = static_cast<int>(std::lround(100 * scale));
        const int inset = static_cast<int>(std::lround(24 * scale));
        const Box box = facts.box(panel);
        EXPECT_EQ(box.width, side);
        EXPECT_EQ(box.height, side);
        EXPECT_NEAR(box.x, 1280 - inset - side, 2);
        EXPECT_NEAR(box.y, 800 - inset - side, 2);
        const int grip = static_cast<int>(5 * scale);
        pointer.drag(box.x + side / 2, box.y + side / 2, 500, 300);
        EXPECT_TRUE(waitUntil([&] { return std::abs(facts.box(panel).x + side / 2 - 500) <= 2; }));
        const Box moved = facts.box(panel);
        pointer.drag(moved.x + side - grip, moved.y + side - grip, moved.x + 2 * side - grip,
                     moved.y + 2 * side - grip);
        EXPECT_TRUE(waitUntil([&] { return std::abs(facts.box(panel).width - 2 * side) <= 2; }));
        EXPECT_NEAR(facts.box(panel).x, moved.x, 2);
        awaitColour(panel, blue);
        program.reset();
    }
}

TEST_F(DesktopsTestOfOne, MayHaveTwoMonitorsADockAndOneMonitorLess) {
    // The second monitor is smaller, at the left of the main monitor, and lower.
    xrandr({"--setmonitor", "*Main", "800/211x700/185+480+0", "screen"});
    xrandr({"--setmonitor", "Side", "480/127x600/158+0+200", "none"});
    const auto call = showCall();
    const CallWindow dock(server, {.title = "Dock",
                                   .wmClass = "Dock",
                                   .place = {480, 660, 800, 40},
                                   .type = "_NET_WM_WINDOW_TYPE_DOCK"});
    const std::uint32_t strut[] = {0, 0, 0, 140, 0, 0, 0, 0, 0, 0, 480, 1279};
    xcb_change_property(client.xcb(), XCB_PROP_MODE_REPLACE, dock.window(),
                        client.atom("_NET_WM_STRUT_PARTIAL"), XCB_ATOM_CARDINAL, 32, 12, strut);
    client.sync();
    startQuiet();
    const xcb_window_t panel = openMirror(*call);
    EXPECT_EQ(facts.box(panel), (Box{1156, 536, 100, 100})) << "above the dock of the main monitor";

    pointer.drag(1200, 580, 200, 500);
    const auto comesTo = [&](int x, int y) {
        return waitUntil([&] { return facts.box(panel) == Box{x, y, 100, 100}; });
    };
    EXPECT_TRUE(comesTo(156, 456));
    xrandr({"--delmonitor", "Side"});
    EXPECT_TRUE(comesTo(480, 456)) << "not back on the monitor that is left";

    xrandr({"--setmonitor", "*New", "400/106x300/79+0+400", "none"});
    pressVisibilityShortcut(); // A change of the screens in the middle of a drag would end the drag
                               // elsewhere.
    awaitNothing();
    pressVisibilityShortcut();
    awaitPanel();
    pointer.drag(520, 500, 100, 484);
    EXPECT_TRUE(comesTo(60, 440));
    xrandr({"--delmonitor", "New"});
    EXPECT_TRUE(comesTo(480, 440)) << "not back from what had been the main monitor";
    awaitColour(panel, blue);
}

TEST_F(DesktopsTestOfOne, ThatIsAWaylandSessionIsSaidToShowItsX11WindowsOnly) {
    startWith({{"WAYLAND_DISPLAY", "wayland-0"}, {"XDG_SESSION_TYPE", "wayland"}});
    const auto call = showCall();
    openMirror(*call);
    EXPECT_THAT(program->log(), testing::HasSubstr("only windows of X11 applications can be seen"));
}

} // namespace
} // namespace mirrolet
