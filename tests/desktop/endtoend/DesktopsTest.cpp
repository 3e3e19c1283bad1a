#include "tests/desktop/endtoend/EndToEndTest.h"
#include "tests/desktop/harness/HarnessError.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <set>

namespace mirrolet {
namespace {

using namespace harness;

std::vector<WindowManagerKind> windowManagersBut(std::set<WindowManagerKind> leftOut) {
    using enum WindowManagerKind;
    std::vector kinds{none, openbox, xfwm4, i3, fluxbox, icewm};
    if (std::getenv("MIRROLET_EVERY_WINDOW_MANAGER") != nullptr)
        kinds.insert(kinds.end(), {mutter, kwin, marco});
    std::erase_if(kinds, [&](auto kind) { return leftOut.contains(kind); });
    return kinds;
}

constexpr auto restTime = std::chrono::milliseconds(600);

/// Tests the prompt and the mirror under one window manager. Writes the results as a row of the table in
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
        // i3 gives a focus change the time of the last input event. The X server ignores a focus change whose
        // time is earlier than that of the change before, which the prompt made. Moving the pointer makes i3
        // use a later time.
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
        CallWindow::Options options{.title = "Slides", .wmClass = "Slides", .colour = quarters(green)};
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

    bool shows(std::uint32_t colour) { return panel() && EndToEndTest::shows(*panel(), colour); }
    std::optional<xcb_window_t> panel() { return program->panel(facts); }
    bool focusIsBackAt(const CallWindow& window) {
        return facts.focus() == window.window() &&
               (GetParam() == WindowManagerKind::none || facts.active() == window.window());
    }
    bool isInNoTaskList(xcb_window_t window) {
        return !testing::Value(facts.clientList(), testing::Contains(window)) ||
               facts.hasState(window, "_NET_WM_STATE_SKIP_TASKBAR");
    }

    /// Presses the visibility shortcut `presses` times, faster than any window manager answers. `presses`
    /// must be odd, so the last of these presses hides the mirror. One more press then shows the mirror
    /// again.
    void hideAndShow(int presses) {
        for (int times = 0; times < presses; ++times)
            pressVisibilityShortcut();
        // Waits until the mirror stays hidden. A press that is handled too late would disturb the drag that
        // follows.
        require("the last of them has hidden it", [this] { return nothingAppears(); });
        pressVisibilityShortcut();
    }

    /// Shows a window over nearly the whole screen. The window is a dialog, because tiling window managers
    /// let dialogs float.
    std::unique_ptr<CallWindow> showNotes() {
        auto notes =
            std::make_unique<CallWindow>(server, CallWindow::Options{.title = "Notes",
                                                                     .wmClass = "Editor",
                                                                     .place = {0, 0, 1270, 780},
                                                                     .type = "_NET_WM_WINDOW_TYPE_DIALOG"});
        giveFocus(*notes);
        return notes;
    }

    void accept() {
        awaitPrompt();
        keyboard.stroke({key::returnKey});
        awaitColour(awaitPanel(), blue);
    }

    std::string row;
};

/// Tests that run only under a window manager, because without one there are neither desktops nor managed
/// windows.
class DesktopsTestOfManagers : public DesktopsTest {};
/// Tests that run only under a window manager that can minimize a window. i3 cannot do that.
class DesktopsTestOfMinimizing : public DesktopsTest {};

TEST_P(DesktopsTest, CarriesThePrompt) {
    start();
    const auto notes = showNotes();
    // Some window managers give the focus to the new call, so the focus may go back to either window.
    auto call = showCall();
    const auto isBack = [&] { return focusIsBackAt(*notes) || focusIsBackAt(*call); };
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
}

/// Opens the mirror by its shortcut while the program does not monitor windows. Otherwise the program would
/// end the session when i3 hides the call behind the full-screen window.
TEST_P(DesktopsTest, CarriesAFloatingMirror) {
    startQuiet();
    const auto notes = showNotes();
    const auto call = showCall();
    giveFocus(*call);
    pressFrontmostShortcut();
    awaitPanel();
    giveFocus(*notes);
    note("above normal windows",
         [&] { return shows(blue) && facts.isAbove(notes->window(), call->window()); });
    paint(*call, orange);
    note("the picture of an obscured source is live", [&] { return shows(orange); });
    const auto slides = showFullScreen();
    note("above full-screen windows", [&] { return shows(orange) && facts.focus() == slides->window(); });
    note("in no task list", [&] { return isInNoTaskList(*panel()); });
    if (GetParam() == WindowManagerKind::none) {
        row += " | –";
    } else {
        manager->showDesktop(client, 1);
        note("on all desktops", [&] { return shows(orange); });
        manager->showDesktop(client, 0);
        giveFocus(*slides);
    }

    hideAndShow(5);
    note("hidden and shown by its shortcut", [&] { return shows(orange); });
    const xcb_window_t shown = *panel();
    // Reads the place of the panel, because the panel starts at another place if the window manager has a
    // dock.
    const Box before = facts.box(shown);
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

TEST_P(DesktopsTestOfManagers, CarriesAMirrorAmongOrdinaryWindows) {
    startQuiet(R"("pipAlwaysOnTop": false)");
    const Box nearlyAll{60, 80, 1200, 700}; // The window reaches under the mirror.
    const auto call = showWindow({.place = nearlyAll, .colour = quarters(blue)});
    openMirror(*call);
    const auto isAsItShould = [&] {
        return shows(blue) && isInNoTaskList(*panel()) && facts.focus() == call->window();
    };
    note("in front without the focus, in no task list", isAsItShould);
    hideAndShow(5);
    note("hidden and shown by its shortcut", isAsItShould);
    if (GetParam() != WindowManagerKind::i3) { // i3 keeps the mirror above other windows.
        const auto other = showWindow(
            {.title = "Notes", .wmClass = "Editor", .place = nearlyAll, .colour = quarters(green)});
        EXPECT_TRUE(waitUntil([&] { return facts.isAbove(other->window(), *panel()); }));
        hideAndShow(1);
        EXPECT_TRUE(waitUntil([&] { return shows(blue); })) << "in front of another window when shown again";
        EXPECT_EQ(facts.focus(), other->window());
    }
    manager->showDesktop(client, 1);
    note("on all desktops", [&] { return shows(blue) && isInNoTaskList(*panel()); });
    row.insert(0, ", not floating");
}

TEST_P(DesktopsTestOfManagers, KeepsTheMirrorOfACallWhoseWorkspaceIsLeft) {
    start();
    const auto call = showCall();
    const auto isKept = [&] {
        return holdsFor([&] { return panel() && !program->prompt(facts); }, restTime) && shows(blue);
    };
    accept();
    for (int times = 0; times < 3; ++times) {
        manager->showDesktop(client, 1);
        EXPECT_TRUE(isKept());
        manager->showDesktop(client, 0);
        EXPECT_TRUE(isKept());
    }
    for (const auto colour : {orange, blue}) {
        paint(*call, colour);
        note("a call on another workspace keeps its mirror, live again on return",
             [&] { return shows(colour); });
    }
    clickCloseButton(*panel());
    awaitNothing();
    manager->showDesktop(client, 1);
    EXPECT_TRUE(nothingAppears()) << "a call that is not mirrored has ended";
    manager->showDesktop(client, 0);
    accept();
}

TEST_P(DesktopsTestOfMinimizing, EndsTheMirrorOfAMinimizedCallUnlessTheCallStaysLive) {
    start();
    const auto call = showCall();
    accept();
    commands.minimize(call->window());
    if (GetParam() != WindowManagerKind::mutter) {
        note("a minimized call has ended", [&] { return nothingShown(); });
        commands.activate(call->window());
        return accept();
    }
    require("the call is minimized", [&] { return facts.hasState(call->window(), "_NET_WM_STATE_HIDDEN"); });
    paint(*call, orange);
    note("a minimized call", [&] { return shows(orange); });
    EXPECT_TRUE(holdsFor([&] { return shows(orange) && !program->prompt(facts); }, restTime));
}

const auto nameOf = [](const auto& each) { return WindowManager::name(each.param); };

INSTANTIATE_TEST_SUITE_P(Under, DesktopsTest, testing::ValuesIn(windowManagersBut({})), nameOf);
INSTANTIATE_TEST_SUITE_P(Under, DesktopsTestOfManagers,
                         testing::ValuesIn(windowManagersBut({WindowManagerKind::none})), nameOf);
INSTANTIATE_TEST_SUITE_P(
    Under, DesktopsTestOfMinimizing,
    testing::ValuesIn(windowManagersBut({WindowManagerKind::none, WindowManagerKind::i3})), nameOf);

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
    // The second monitor is smaller than the main monitor. It lies to the left of the main monitor, and
    // lower.
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
    // Hides the mirror and shows it again. After that the mirror has handled the change of the monitors,
    // which would otherwise disturb the drag.
    pressVisibilityShortcut();
    awaitNothing();
    pressVisibilityShortcut();
    awaitPanel();
    pointer.drag(520, 500, 100, 484);
    EXPECT_TRUE(comesTo(60, 440));
    xrandr({"--delmonitor", "New"});
    EXPECT_TRUE(comesTo(480, 440)) << "not back from what had been the main monitor";
    awaitColour(panel, blue);
}

TEST_F(DesktopsTestOfOne, WhoseCompositorCannotBeReachedIsSaidToShowX11WindowsOnly) {
    startWith({{"WAYLAND_DISPLAY", "wayland-0"}, {"XDG_SESSION_TYPE", "wayland"}});
    const auto call = showCall();
    openMirror(*call);
    EXPECT_THAT(program->log(), testing::HasSubstr("only windows of X11 applications can be seen"));
}

} // namespace
} // namespace mirrolet
