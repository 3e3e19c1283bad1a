#include "platform/desktop/x11/panel/PanelStack.h"
#include "platform/desktop/x11/panel/X11PanelWindow.h"
#include "platform/desktop/x11/server/CompositingManager.h"
#include "platform/desktop/x11/windows/PreviousFocus.h"
#include "tests/desktop/harness/CallWindow.h"
#include "tests/desktop/harness/DesktopServices.h"
#include "tests/desktop/harness/Pointer.h"
#include "tests/desktop/harness/SessionBus.h"
#include "tests/desktop/harness/WindowCommands.h"
#include "tests/desktop/harness/WindowFacts.h"
#include "tests/desktop/harness/WindowManager.h"
#include "tests/desktop/harness/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xcb/shape.h>

#include <array>
#include <cstring>
#include <optional>
#include <unistd.h>

namespace mirrolet::platform::desktop::x11 {
namespace {

using namespace harness;
using testing::Contains;
using testing::Not;

constexpr std::uint32_t panelColour = 0xe04020;
constexpr int panelLevel = 3;
constexpr int promptLevel = 8;
constexpr std::uint32_t everyDesktop = 0xffffffff;

/// Makes the part of the X11 backend that handles panels, with a connection to the X server.
struct Backend {
    explicit Backend(const XServer& server) : connection(X11Connection::open(server.display(), problem)) {
        connection->start();
    }

    std::string problem;
    std::unique_ptr<X11Connection> connection;
    PreviousFocus previousFocus;
    CompositingManager compositingManager{*connection};
    PanelStack stack{*connection};
};

/// Makes a panel over a connection that the backend does not use, as Qt does.
class TestPanel {
  public:
    TestPanel(const XServer& server, Backend& backend, PanelStacking stacking, int level,
              Box where = {40, 50, 200, 120})
        : client(server), window(xcb_generate_id(client.xcb())) {
        const std::uint32_t values[] = {panelColour, stacking == PanelStacking::floating ? 1U : 0U,
                                        XCB_EVENT_MASK_FOCUS_CHANGE};
        xcb_create_window(client.xcb(), XCB_COPY_FROM_PARENT, window, client.root(),
                          static_cast<std::int16_t>(where.x), static_cast<std::int16_t>(where.y),
                          static_cast<std::uint16_t>(where.width), static_cast<std::uint16_t>(where.height),
                          0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
        const auto protocol = client.atom("WM_TAKE_FOCUS");
        xcb_change_property(client.xcb(), XCB_PROP_MODE_REPLACE, window, client.atom("WM_PROTOCOLS"),
                            XCB_ATOM_ATOM, 32, 1, &protocol);
        client.sync();
        desktop.emplace(*backend.connection, backend.stack, backend.compositingManager, backend.previousFocus,
                        window, stacking);
        desktop->setLevel(level);
    }
    ~TestPanel() {
        desktop.reset();
        xcb_destroy_window(client.xcb(), window);
        client.sync();
    }
    TestPanel(const TestPanel&) = delete;
    TestPanel& operator=(const TestPanel&) = delete;

    void show() {
        // Waits until the X server has handled the panel's last map or unmap request. The backend's next
        // requests depend on that request, but arrive over another connection and could overtake it.
        client.sync();
        desktop->willShow();
        xcb_map_window(client.xcb(), window);
        xcb_flush(client.xcb()); // Like Qt, does not wait for the X server.
        desktop->didShow();
    }
    void hide() {
        client.sync();
        desktop->willHide();
        xcb_unmap_window(client.xcb(), window);
        tellManagerOfUnmap();
        xcb_flush(client.xcb());
        desktop->didHide();
    }

    /// Returns how often the panel has got the focus.
    int timesFocused() {
        while (Reply<xcb_generic_event_t> event{xcb_poll_for_event(client.xcb())})
            if ((event->response_type & 0x7f) == XCB_FOCUS_IN)
                focused += tookKeyboard(reinterpret_cast<const xcb_focus_in_event_t&>(*event)) ? 1 : 0;
        return focused;
    }

    XClient client;
    const xcb_window_t window;
    std::optional<X11PanelWindow> desktop;

  private:
    /// Sends an unmap event that tells the window manager that the panel is hidden. The X server itself sends
    /// no such event if the window manager has not mapped the panel yet.
    void tellManagerOfUnmap() {
        std::array<char, 32> event{};
        const xcb_unmap_notify_event_t notify{XCB_UNMAP_NOTIFY, 0, 0, client.root(), window, 0, {}};
        std::memcpy(event.data(), &notify, sizeof notify);
        xcb_send_event(client.xcb(), 0, client.root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       event.data());
    }
    static bool tookKeyboard(const xcb_focus_in_event_t& event) {
        return event.mode == XCB_NOTIFY_MODE_NORMAL && event.detail != XCB_NOTIFY_DETAIL_POINTER;
    }

    int focused = 0;
};

class PanelWindowTestUnderAManager : public testing::TestWithParam<WindowManagerKind> {
  protected:
    void startManager() {
        manager.reset();
        manager = std::make_unique<WindowManager>(server, GetParam(), &bus);
    }

    /// Makes a window of another process and waits until that window has the focus.
    std::unique_ptr<CallWindow> focusedWindow(CallWindow::Options options) {
        auto window = std::make_unique<CallWindow>(server, options);
        const bool managed = manager && manager->kind() != WindowManagerKind::none;
        if (managed) {
            WindowCommands commands(client);
            commands.activate(window->window());
            // Waits until the window manager has handled activate(). A new window may have the focus before
            // that. A later change of the focus, during the test, would look like a choice of the user.
            commands.awaitManager();
        } else {
            xcb_set_input_focus(client.xcb(), XCB_INPUT_FOCUS_PARENT, window->window(), XCB_CURRENT_TIME);
        }
        require("the window has the focus", [&] {
            return facts.focus() == window->window() && (!managed || facts.active() == window->window());
        });
        return window;
    }
    std::unique_ptr<CallWindow> fullScreenWindow() {
        CallWindow::Options options;
        options.states = {"_NET_WM_STATE_FULLSCREEN"};
        if (GetParam() == WindowManagerKind::none)
            options.place = {0, 0, 1280, 800};
        auto window = focusedWindow(options);
        require("the window fills the screen", [&] { return facts.box(window->window()).width == 1280; });
        return window;
    }

    bool comesAbove(xcb_window_t front, xcb_window_t back) {
        return waitUntil([=, this] { return facts.isAbove(front, back); });
    }
    XServer server;
    SessionBus bus{SessionBus::Services::installed, server.with({})};
    XClient client{server};
    WindowFacts facts{client};
    std::unique_ptr<WindowManager> manager;
    Backend backend{server};
};

TEST_P(PanelWindowTestUnderAManager, StaysBelowPopUpsAndKeepsItsLevels) {
    startManager();
    TestPanel prompt(server, backend, PanelStacking::floating, promptLevel, {60, 70, 200, 120});
    TestPanel panel(server, backend, PanelStacking::floating, panelLevel);
    prompt.show();
    panel.show();
    EXPECT_TRUE(comesAbove(prompt.window, panel.window));
    CallWindow::Options options;
    options.overrideRedirect = true;
    const CallWindow locker(server, options);
    options.type = "_NET_WM_WINDOW_TYPE_POPUP_MENU";
    const CallWindow menu(server, options);

    const auto window = fullScreenWindow();
    EXPECT_TRUE(comesAbove(panel.window, window->window()));
    for (const xcb_window_t popUp : {menu.window(), locker.window()}) {
        const std::uint32_t top = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(client.xcb(), popUp, XCB_CONFIG_WINDOW_STACK_MODE, &top);
    }
    const std::uint32_t bottom[] = {facts.topLevel(window->window()), XCB_STACK_MODE_BELOW};
    for (const xcb_window_t lowered : {panel.window, prompt.window})
        xcb_configure_window(client.xcb(), lowered, XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE,
                             bottom);
    client.sync();
    EXPECT_TRUE(comesAbove(panel.window, window->window()));
    EXPECT_TRUE(comesAbove(prompt.window, panel.window));
    for (const xcb_window_t popUp : {menu.window(), locker.window()})
        EXPECT_TRUE(facts.isAbove(popUp, prompt.window));
    panel.desktop->setLevel(promptLevel + 1);
    EXPECT_TRUE(comesAbove(panel.window, prompt.window));

    startManager();
    EXPECT_TRUE(waitUntil([&] { return facts.viewable(window->window()); }));
    EXPECT_TRUE(comesAbove(prompt.window, window->window())) << "a new window manager";
    EXPECT_THAT(facts.clientList(), Not(Contains(panel.window)));
    EXPECT_EQ(panel.timesFocused(), 0);
}

/// Tests panels that the window manager raises and lowers among other windows. Not run without a window
/// manager.
class PanelWindowTestAmongNormalWindows : public PanelWindowTestUnderAManager {};

TEST_P(PanelWindowTestAmongNormalWindows, IsOnEveryDesktopInNoListNeverFocusedAndFollowsHasteToTheLast) {
    startManager();
    const auto window = focusedWindow({});
    TestPanel panel(server, backend, PanelStacking::amongNormal, 0);
    const auto isAsItShould = [&] {
        return facts.viewable(panel.window) && facts.hasState(panel.window, "_NET_WM_STATE_SKIP_TASKBAR") &&
               facts.hasState(panel.window, "_NET_WM_STATE_SKIP_PAGER") &&
               facts.numbers(panel.window, "_NET_WM_DESKTOP") == std::vector{everyDesktop};
    };
    for (int round = 1; round <= 8; ++round) {
        for (int haste = 0; haste < round; ++haste) {
            panel.show();
            panel.hide();
        }
        panel.show();
        ASSERT_TRUE(waitUntil(isAsItShould)) << round;
        panel.hide();
        panel.show();
        panel.hide();
        ASSERT_TRUE(waitUntil([&] { return !facts.viewable(panel.window); })) << round;
    }
    panel.show();
    ASSERT_TRUE(waitUntil(isAsItShould));
    if (GetParam() != WindowManagerKind::i3) { // i3 keeps the panel above every tiled window.
        const auto above = focusedWindow({});
        EXPECT_TRUE(comesAbove(above->window(), panel.window));
        panel.desktop->didShow(); // Raises a panel that some window managers put below the focused window.
        EXPECT_TRUE(comesAbove(panel.window, above->window()));
    }
    startManager();
    EXPECT_TRUE(waitUntil(isAsItShould)) << "a new window manager";
    EXPECT_EQ(panel.timesFocused(), 0);
}

TEST_P(PanelWindowTestUnderAManager, PromptLeavesTheFocusToTheWindowThatTheUserChose) {
    startManager();
    const auto chosen = focusedWindow({.place = {700, 300, 640, 400}});
    const auto owner = focusedWindow({.place = {60, 300, 640, 400}});
    TestPanel prompt(server, backend, PanelStacking::floating, promptLevel);
    prompt.show();
    prompt.desktop->takeFocus();
    ASSERT_TRUE(waitUntil([&] { return facts.focus() == prompt.window; }));
    const auto choose = [this](const CallWindow& wanted) {
        if (GetParam() == WindowManagerKind::none) {
            xcb_set_input_focus(client.xcb(), XCB_INPUT_FOCUS_PARENT, wanted.window(), XCB_CURRENT_TIME);
        } else {
            const Box box = facts.box(wanted.window());
            Pointer(client).click(box.x + box.width / 2, box.y + box.height / 2);
        }
        EXPECT_TRUE(waitUntil([&] { return facts.focus() == wanted.window(); }));
        EXPECT_TRUE(waitUntil([&] { return backend.previousFocus.window() == XCB_WINDOW_NONE; }));
    };
    choose(*chosen);
    prompt.desktop->takeFocus();
    EXPECT_TRUE(waitUntil([&] { return facts.focus() == prompt.window; })) << "asked for once more";
    EXPECT_EQ(backend.previousFocus.window(), chosen->window());
    choose(*owner);
    prompt.hide();
    EXPECT_TRUE(waitUntil([&] { return !facts.viewable(prompt.window); }));
    EXPECT_TRUE(holdsFor([&] { return facts.focus() == owner->window(); }, std::chrono::milliseconds(100)));
}

const auto nameOf = [](const auto& each) { return WindowManager::name(each.param); };

INSTANTIATE_TEST_SUITE_P(Panels, PanelWindowTestUnderAManager,
                         testing::Values(WindowManagerKind::none, WindowManagerKind::openbox,
                                         WindowManagerKind::xfwm4, WindowManagerKind::i3,
                                         WindowManagerKind::icewm),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Panels, PanelWindowTestAmongNormalWindows,
                         testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4,
                                         WindowManagerKind::i3, WindowManagerKind::icewm),
                         nameOf);

class PanelWindowTest : public testing::Test {
  protected:
    /// Returns the rectangles of the window's shape. Returns no rectangles if the window has no shape.
    std::vector<Box> shapeOf(xcb_window_t window) {
        const Reply<xcb_shape_query_extents_reply_t> extents(xcb_shape_query_extents_reply(
            client.xcb(), xcb_shape_query_extents(client.xcb(), window), nullptr));
        if (!extents || !extents->bounding_shaped)
            return {};
        const Reply<xcb_shape_get_rectangles_reply_t> reply(xcb_shape_get_rectangles_reply(
            client.xcb(), xcb_shape_get_rectangles(client.xcb(), window, XCB_SHAPE_SK_BOUNDING), nullptr));
        std::vector<Box> boxes;
        for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i) {
            const auto& each = xcb_shape_get_rectangles_rectangles(reply.get())[i];
            boxes.push_back({each.x, each.y, each.width, each.height});
        }
        return boxes;
    }

    bool isSeen(const Box& box) { return facts.pixel(box.x + 20, box.y + 20) == panelColour; }

    XServer server;
    XClient client{server};
    WindowFacts facts{client};
    Backend backend{server};
};

TEST_F(PanelWindowTest, CornersAreCutOnlyWithoutACompositingManager) {
    TestPanel panel(server, backend, PanelStacking::floating, panelLevel);
    panel.desktop->setCorners({200, 120}, 10);
    EXPECT_TRUE(waitUntil([&] { return !shapeOf(panel.window).empty(); }));
    const auto shape = shapeOf(panel.window);
    EXPECT_EQ(shape.front(), (Box{8, 0, 184, 1}));
    EXPECT_EQ(shape.back(), (Box{8, 119, 184, 1}));
    EXPECT_THAT(shape, Contains((Box{0, 8, 200, 104})));
    {
        const Picom picom(server);
        EXPECT_TRUE(waitUntil([&] { return shapeOf(panel.window).empty(); }));
        panel.desktop->setCorners({100, 60}, 10);
        EXPECT_TRUE(backend.compositingManager.running());
    }
    EXPECT_TRUE(waitUntil([&] { return !shapeOf(panel.window).empty(); }));
    EXPECT_EQ(shapeOf(panel.window).front(), (Box{8, 0, 84, 1})) << "the size that was set in between";
    panel.desktop->setCorners({1, 1}, 10);
    EXPECT_TRUE(waitUntil([&] { return shapeOf(panel.window) == std::vector{Box{0, 0, 1, 1}}; }));
}

TEST_F(PanelWindowTest, ThrowsAShadowWhileACompositingManagerRuns) {
    const CallWindow wall(server, {.place = {0, 0, 1280, 800}, .colour = "ffffff"});
    TestPanel panel(server, backend, PanelStacking::floating, panelLevel);
    panel.desktop->setCorners({200, 120}, 10);
    panel.desktop->setShadow({0.25, 18, 6});
    panel.show();
    // Returns whether the box has a shadow that ends at some distance from the box.
    const auto falls = [&](const Box& box) {
        const auto grey = [&](int x, int y) { return int(facts.pixel(x, y) & 0xff); };
        const int below = grey(box.x + box.width / 2, box.y + box.height + 4);
        const int above = grey(box.x + box.width / 2, box.y - 4);
        return below > 195 && below < 225 && above > below + 15 && above < 254 &&
               grey(box.x + box.width + 34, box.y) > 252 && isSeen(box);
    };
    EXPECT_TRUE(waitUntil([&] { return facts.viewable(panel.window); }));
    EXPECT_EQ(facts.pixel(140, 174), 0xffffffU) << "without a compositing manager";
    {
        const Picom picom(server);
        EXPECT_TRUE(waitUntil([&] { return falls({40, 50, 200, 120}); }));
        for (const Box& box : {Box{300, 220, 200, 120}, Box{300, 220, 420, 330}, Box{300, 220, 50, 50}}) {
            const std::uint32_t values[] = {std::uint32_t(box.x), std::uint32_t(box.y),
                                            std::uint32_t(box.width), std::uint32_t(box.height)};
            xcb_configure_window(panel.client.xcb(), panel.window,
                                 XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                                     XCB_CONFIG_WINDOW_HEIGHT,
                                 values);
            xcb_flush(panel.client.xcb());
            EXPECT_TRUE(waitUntil([&] { return falls(box); })) << box.width;
        }
        const CallWindow between(server, {.colour = "ffffff"});
        EXPECT_TRUE(waitUntil([&] { return falls({300, 220, 50, 50}); })) << "a window below the panel";
        panel.hide();
        EXPECT_TRUE(waitUntil([&] { return facts.pixel(325, 274) == 0xffffff; })) << "hidden";
        panel.show();
        EXPECT_TRUE(waitUntil([&] { return falls({300, 220, 50, 50}); })) << "shown again";
    }
    EXPECT_TRUE(waitUntil([&] { return facts.windowsOf(getpid()) == std::vector{panel.window}; }));
}

TEST_F(PanelWindowTest, AnOpponentThatAnswersEveryRaiseWinsSoonAndOnlyForAWhile) {
    const CallWindow opponent(server);
    TestPanel panel(server, backend, PanelStacking::floating, panelLevel);
    panel.show();
    const auto stackOpponent = [&](std::uint32_t mode) {
        xcb_configure_window(client.xcb(), opponent.window(), XCB_CONFIG_WINDOW_STACK_MODE, &mode);
        client.sync();
    };
    const auto opponentRaises = [&] {
        stackOpponent(XCB_STACK_MODE_ABOVE);
        return waitUntil([&] { return facts.isAbove(panel.window, opponent.window()); },
                         std::chrono::milliseconds(200));
    };
    int answers = 0;
    while (answers < 100 && opponentRaises())
        ++answers;
    EXPECT_GE(answers, 8);
    EXPECT_LT(answers, 100);
    EXPECT_TRUE(waitUntil([&] {
        stackOpponent(XCB_STACK_MODE_BELOW);
        return opponentRaises();
    }));
}

TEST_F(PanelWindowTest, FocusGoesOnWhenNoWindowOrADeadOneHadItOrThePromptWasNeverSeen) {
    auto owner = std::make_unique<CallWindow>(server);
    xcb_set_input_focus(client.xcb(), XCB_INPUT_FOCUS_PARENT, owner->window(), XCB_CURRENT_TIME);
    client.sync();
    TestPanel prompt(server, backend, PanelStacking::floating, promptLevel);
    prompt.desktop->takeFocus();
    EXPECT_TRUE(waitUntil([&] { return backend.previousFocus.window() == owner->window(); }));
    prompt.desktop->returnFocus();
    EXPECT_EQ(backend.previousFocus.window(), XCB_WINDOW_NONE);
    prompt.show();
    EXPECT_TRUE(waitUntil([&] { return facts.viewable(prompt.window); }));
    EXPECT_EQ(facts.focus(), owner->window());

    // The focus XCB_INPUT_FOCUS_POINTER_ROOT means that no window has the focus. Some window managers set it
    // when they show an empty desktop.
    for (const xcb_window_t next : {xcb_window_t{XCB_INPUT_FOCUS_POINTER_ROOT}, owner->window()}) {
        prompt.desktop->takeFocus();
        ASSERT_TRUE(waitUntil([&] { return facts.focus() == prompt.window; }));
        xcb_set_input_focus(client.xcb(), XCB_INPUT_FOCUS_POINTER_ROOT, next, XCB_CURRENT_TIME);
        client.sync();
    }
    prompt.desktop->takeFocus();
    ASSERT_TRUE(waitUntil([&] { return facts.focus() == prompt.window; }));
    const xcb_window_t dead = owner->window();
    owner.reset();
    ASSERT_TRUE(waitUntil([&] { return !facts.exists(dead); }));
    prompt.desktop->returnFocus();
    EXPECT_TRUE(waitUntil([&] { return facts.focus() == XCB_INPUT_FOCUS_POINTER_ROOT; }));
}

} // namespace
} // namespace mirrolet::platform::desktop::x11
