// Tests what a user gets only in a Plasma session, or gets there in another way than on X11.

#include "tests/desktop/endtoend/AnyDesktopTest.h"
#include "tests/desktop/harness/CallWindow.h"
#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/PanelDrag.h"
#include "tests/desktop/harness/Similarity.h"
#include "tests/desktop/harness/plasma/NativeWindow.h"
#include "tests/desktop/harness/plasma/PlasmaTestDesktop.h"

#include <algorithm>
#include <chrono>
#include <string>

namespace mirrolet {
namespace {

using namespace harness;
using namespace std::chrono_literals;

constexpr std::uint32_t menuColour = 0xc02020; ///< The colour of the native window's menu.
constexpr std::uint32_t pageGround = 0x18181c; ///< The colour of its page between the lines.

class PlasmaCallTest : public AnyDesktopTest {
  protected:
    explicit PlasmaCallTest(const PlasmaSession::Options& options = {})
        : AnyDesktopTest(std::make_unique<PlasmaTestDesktop>(options)) {}

    static Picture part(const Picture& picture, const Box& box) {
        Picture result{box.width, box.height, {}};
        for (int y = 0; y < box.height; ++y)
            for (int x = 0; x < box.width; ++x)
                result.pixels.push_back(picture.at(x + box.x, y + box.y));
        return result;
    }
    /// Returns the picture without its outermost pixels, because a mirror draws its border and its round
    /// corners there.
    static Picture inside(const Picture& picture) {
        constexpr int edge = 16;
        return part(picture, {edge, edge, picture.width - 2 * edge, picture.height - 2 * edge});
    }
    static Picture leftHalf(const Picture& picture) {
        return part(picture, {0, 0, picture.width / 2, picture.height});
    }
    [[nodiscard]] Picture insideMirror(xcb_window_t panel) const {
        return inside(desktop->screenshot(facts.box(panel)));
    }

    PlasmaSession& session = static_cast<PlasmaTestDesktop&>(*desktop).session;
};

class PlasmaTitleBarTest : public PlasmaCallTest {
  protected:
    PlasmaTitleBarTest() : PlasmaCallTest({.titleBars = true}) {}

    void awaitTitleBar(pid_t process, int contentHeight) {
        require("KWin draws a title bar", [&] { return windows.frame(process).height > contentHeight + 10; });
    }

    PlasmaWindows windows{session};
};

class PlasmaStrictFocusTest : public PlasmaCallTest {
  protected:
    PlasmaStrictFocusTest()
        : PlasmaCallTest({.kwinSettings = "[Windows]\nFocusStealingPreventionLevel=4\n"}) {}
};

class PlasmaWithoutWirePlumberTest : public PlasmaCallTest {
  protected:
    PlasmaWithoutWirePlumberTest() : PlasmaCallTest({.sessionManager = PipeWire::SessionManager::none}) {}
};

/// KWin 6 streams a window together with its open menu. There the menu is seen, but only at its place.
TEST_F(PlasmaTitleBarTest, IsNotInTheMirrorOfANativeWindowAndNeitherIsItsMenu) {
    start();
    const NativeWindow call(session, {.width = 400, .height = 400});
    awaitTitleBar(call.pid(), 400);
    const xcb_window_t panel = accept();
    const Box frame = windows.frame(call.pid());
    const Box menu{frame.x + 400, frame.y + frame.height - 150, 1, 1};
    const auto isOpen = [&] { return desktop->screenshot(menu).at(0, 0) == menuColour; };
    Picture before;
    require("the mirror is still", [&] {
        before = insideMirror(panel);
        return holdsFor([&] { return insideMirror(panel) == before; }, 300ms);
    });
    const auto isUnchanged = [&] {
        const Picture now = insideMirror(panel);
        return PlasmaSession::generation() >= 6 ? leftHalf(now) == leftHalf(before) : now == before;
    };
    call.tell("menu");
    require("the menu is open", isOpen);
    EXPECT_TRUE(holdsFor(isUnchanged, 500ms)) << "the menu is seen";
    for (const auto& colours : {otherColours, fourColours}) {
        call.tell("colour " + colourNames(colours));
        awaitColours(colours);
    }
    EXPECT_TRUE(waitUntil(isUnchanged)) << "the menu is seen later";
    call.tell("close-menu");
    require("the menu is closed", [&] { return !isOpen(); });
    EXPECT_TRUE(waitUntil([&] { return insideMirror(panel) == before; })) << "the menu is seen too long";
    EXPECT_TRUE(holdsFor([&] { return insideMirror(panel) == before; }, 300ms));
}

// No desktop entry names the application. KWin 5 reports its class in lower case, by which no call is known.
TEST_F(PlasmaTitleBarTest, IsNotInTheMirrorOfAWindowOfXWayland) {
    start();
    const CallWindow call(session, {.place = {60, 80, 400, 400}, .colour = colourNames(fourColours)});
    awaitTitleBar(call.pid(), 400);
    const xcb_window_t panel = accept();
    for (const auto& colours : {otherColours, fourColours}) {
        call.tell("colour " + colourNames(colours));
        awaitColours(colours);
    }
    const Box box = facts.box(panel);
    EXPECT_TRUE(isNear(pixel(box.x + box.width / 4, box.y + 4), fourColours[0])) << "a title bar is seen";
    call.tell("quit");
    awaitNothing();
}

TEST_F(PlasmaStrictFocusTest, IsNotKeptFromThePrompt) {
    const auto notes = showNotes();
    const auto slides = showNotes(true);
    start();
    for (const auto* window : {notes.get(), slides.get()})
        for (const bool isAccepted : {false, true}) {
            window->activate();
            awaitFocus(*window);
            const auto call = showCall();
            if (isAccepted)
                accept();
            else
                decline();
            require("the focus is given back", [&] { return window->hasFocus() || call->hasFocus(); });
            EXPECT_FALSE(gotPress(*window) || gotPress(*call));
            call->tell("quit");
            awaitNothing();
            require("the monitor sees the call's end", [this] { return nothingAppears(); });
        }
}

TEST_F(PlasmaCallTest, HasAMirrorAmongTheOtherWindowsIfItShallNotFloat) {
    startQuiet(R"("pipAlwaysOnTop": false)");
    const auto call = desktop->show({.width = 700, .height = 700});
    awaitFocus(*call);
    const xcb_window_t panel = openMirror();
    EXPECT_TRUE(call->hasFocus());
    for (const char* state : {"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"})
        EXPECT_TRUE(waitUntil([&] { return facts.hasState(panel, state); })) << state;
    const auto large = desktop->show({.title = "Notes", .colours = "202020", .width = 1270, .height = 790});
    awaitFocus(*large);
    const Box box = facts.box(panel);
    require("the mirror is behind", [&] { return pixel(box.x + 50, box.y + 50) == notesColour; });
    pressVisibilityShortcut();
    awaitNothing();
    pressVisibilityShortcut();
    awaitColours(fourColours);
    EXPECT_TRUE(large->hasFocus());
    large->activate();
    EXPECT_TRUE(mirrorStays());
}

TEST_F(PlasmaWithoutWirePlumberTest, TheMirrorEndsWithOneLine) {
    startQuiet();
    const auto call = showCall();
    awaitFocus(*call);
    pressFrontmostShortcut();
    std::string::size_type line = std::string::npos;
    require("the line is logged", [&] {
        line = program->log().find("is WirePlumber running?\n");
        return line != std::string::npos;
    });
    awaitNothing();
    EXPECT_TRUE(nothingAppears());
    EXPECT_EQ(program->log().substr(line), "is WirePlumber running?\n") << "more than one line";
}

TEST_F(PlasmaCallTest, LooksLikeItsWindowInEverySize) {
    startQuiet();
    const NativeWindow call(session, {.width = 600, .height = 600, .decorated = false});
    call.tell("page");
    PlasmaWindows windows(session);
    Picture page;
    require("the window shows its page", [&] {
        page = desktop->screenshot(windows.frame(call.pid()));
        return call.hasFocus() && page.at(300, 0) == pageGround && page.at(5, 300) == pageGround;
    });
    pressFrontmostShortcut();
    const xcb_window_t panel = awaitPanel();
    const auto awaitLikeness = [&] {
        const Box box = facts.box(panel);
        const Picture expected = inside(areaAverage(page, box.width, box.height));
        double best = 0;
        const auto isAlike = [&] {
            best = std::max(best, similarity(insideMirror(panel), expected));
            return best >= 0.96;
        };
        EXPECT_TRUE(waitUntil(isAlike)) << best << " in a width of " << box.width;
        RecordProperty("similarity_" + std::to_string(box.width), std::to_string(best));
    };
    awaitLikeness();
    const Box box = facts.box(panel);
    dragPanel(facts, pointer, panel, {box.x + 50, box.y + 50, 300, 200}, {250, 150, 100, 100});
    awaitLikeness(); // The compositor moves the mirror a moment later.
    dragPanel(facts, pointer, panel, {344, 244, 494, 394}, {250, 150, 250, 250});
    awaitLikeness();
}

} // namespace
} // namespace mirrolet
