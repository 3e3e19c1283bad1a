// Tests the hot keys of a Plasma session with a real KWin.

#include "platform/desktop/wayland/plasma/PlasmaHotKeys.h"

#include "platform/desktop/wayland/keyboard/SeatKeyboard.h"
#include "platform/desktop/x11/keys/X11HotKeys.h"
#include "tests/desktop/harness/CallWindow.h"
#include "tests/desktop/harness/Keyboard.h"
#include "tests/desktop/harness/WindowFacts.h"
#include "tests/desktop/harness/XClient.h"
#include "tests/desktop/harness/plasma/BusClient.h"
#include "tests/desktop/harness/plasma/KWinInput.h"
#include "tests/desktop/harness/plasma/NativeWindow.h"
#include "tests/desktop/harness/plasma/PlasmaSession.h"

#include <gio/gio.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <mutex>

namespace mirrolet::platform::desktop::wayland {
namespace {

using namespace harness;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t superAndAlt = superModifier | altModifier;
constexpr auto ownComponent = "app.mirrolet.Mirrolet";
/// Qt's numbers for Super+Alt+P, and for Super+Alt with the Cyrillic letter on the same key.
constexpr std::int32_t superAltP = 0x18000000 + 'P';
constexpr std::int32_t superAltZe = 0x18000000 + 0x417;

/// All tests in this process share one session, because a process uses the same session bus until it ends.
class PlasmaHotKeysTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        if (!session)
            session = std::make_unique<PlasmaSession>(PlasmaSession::Options{.keyboardLayouts = "us,ru,fr"});
        for (const auto& [name, value] : session->with({}))
            setenv(name.c_str(), value.c_str(), 1);
        setenv("WAYLAND_DISPLAY", session->waylandSocket().c_str(), 1);
    }
    static void TearDownTestSuite() {
        for (const auto& [name, value] : session->with({}))
            unsetenv(name.c_str());
    }

    PlasmaHotKeysTest() {
        wayland = WaylandConnection::open(problem);
        seat = std::make_unique<SeatKeyboard>(*wayland);
        hotKeys = std::make_unique<PlasmaHotKeys>(*seat, [this](std::uint32_t code) {
            ++questions;
            return x11Keys && x11Keys->isDown(code);
        });
        wayland->waitForReplies();
        wayland->waitForReplies();
        hotKeys->setPressed([this](std::uint32_t number) {
            const std::lock_guard guard(lock);
            pressed.push_back(number);
        });
        wayland->start([] {});
    }
    ~PlasmaHotKeysTest() override {
        wayland->end();
        hotKeys.reset();
    }

    /// Returns the hot keys that were pressed since the last call.
    std::vector<std::uint32_t> presses() {
        const std::lock_guard guard(lock);
        return std::exchange(pressed, {});
    }
    bool isPressed(std::vector<std::uint32_t> expected) {
        std::vector<std::uint32_t> all;
        return waitUntil([&] {
            for (const auto number : presses())
                all.push_back(number);
            return all == expected;
        });
    }
    static void strokeP() {
        Keyboard(std::make_shared<KWinInput>(*session)).stroke({key::leftSuper, key::leftAlt, key::p});
    }

    static BusValue ask(const char* method, GVariant* arguments) {
        return BusClient(session->bus())
            .call({"org.kde.kglobalaccel", "/kglobalaccel", "org.kde.KGlobalAccel", method}, arguments);
    }
    /// Registers a shortcut, as another program or another run of Mirrolet does.
    static void add(const char* component, const char* name, std::int32_t combination) {
        const char* const id[] = {component, name, component, name};
        ask("doRegister", g_variant_new("(@as)", g_variant_new_strv(id, 4)));
        constexpr std::uint32_t presentWithoutAutoloading = 6;
        ask("setShortcutKeys",
            g_variant_new_parsed("(%@as, [([%i, 0, 0, 0],)], %u)", g_variant_new_strv(id, 4), combination,
                                 presentWithoutAutoloading));
    }
    static void remove(const char* component, const char* name) {
        ask("unregister", g_variant_new("(ss)", component, name));
    }
    /// Returns how many shortcuts KWin holds for Mirrolet.
    static std::size_t ownShortcuts() {
        const char* const id[] = {ownComponent, "", "", ""};
        const auto answer = ask("allActionsForComponent", g_variant_new("(@as)", g_variant_new_strv(id, 4)));
        GVariant* list = g_variant_get_child_value(answer.get(), 0);
        const auto count = g_variant_n_children(list);
        g_variant_unref(list);
        return count;
    }
    static void activateLayout(std::uint32_t number) {
        BusClient(session->bus())
            .call({"org.kde.keyboard", "/Layouts", "org.kde.KeyboardLayouts", "setLayout"},
                  g_variant_new("(u)", number));
    }

    inline static std::unique_ptr<PlasmaSession> session;
    std::string problem;
    std::unique_ptr<WaylandConnection> wayland;
    std::unique_ptr<x11::X11Connection> x11Connection;
    std::unique_ptr<x11::X11HotKeys> x11Keys;
    std::unique_ptr<SeatKeyboard> seat;
    std::unique_ptr<PlasmaHotKeys> hotKeys;
    std::atomic<int> questions = 0; ///< How often the hot keys asked whether a key is down.

  private:
    std::mutex lock;
    std::vector<std::uint32_t> pressed;
};

TEST_F(PlasmaHotKeysTest, GoToNobodyElseInEveryLayout) {
    const NativeWindow window(*session);
    require("the window has the focus", [&] { return window.hasFocus(); });
    ASSERT_EQ(hotKeys->grab(1, key::p, superAndAlt), GrabResult::held);
    const char* const labels[] = {"P", "З", "P"};
    for (std::uint32_t layout = 0; layout < std::size(labels); ++layout) {
        activateLayout(layout);
        EXPECT_TRUE(waitUntil([&] { return hotKeys->keyLabel(key::p) == labels[layout]; })) << layout;
        strokeP();
        EXPECT_TRUE(isPressed({1})) << layout;
    }
    activateLayout(0);
    const auto got = [&] {
        const auto keys = window.keys();
        return std::find(keys.begin(), keys.end(), "key 33 press") != keys.end();
    };
    EXPECT_FALSE(got());
    for (const bool suspended : {true, false}) {
        if (suspended)
            hotKeys->suspend(true);
        else
            hotKeys->release(1);
        EXPECT_TRUE(waitUntil([] { return ownShortcuts() == 0; }));
        strokeP();
        EXPECT_TRUE(waitUntil(got));
        hotKeys->suspend(false);
    }
    EXPECT_THAT(presses(), IsEmpty());
}

TEST_F(PlasmaHotKeysTest, TakenInOneLayoutLeavesNothingRegistered) {
    add("other.program", "its own", superAltZe);
    EXPECT_EQ(hotKeys->grab(1, key::p, superAndAlt), GrabResult::taken);
    EXPECT_EQ(ownShortcuts(), 0U);
    remove("other.program", "its own");
    EXPECT_EQ(hotKeys->grab(1, key::p, superAndAlt), GrabResult::held);
    EXPECT_EQ(hotKeys->grab(2, key::p, superAndAlt), GrabResult::taken) << "of our own";
    EXPECT_EQ(hotKeys->grab(2, 84, superAndAlt), GrabResult::invalid);
    strokeP();
    EXPECT_TRUE(isPressed({1}));
    hotKeys.reset();
    EXPECT_EQ(ownShortcuts(), 0U);
}

TEST_F(PlasmaHotKeysTest, WhatAKilledRunHasLeftIsRemoved) {
    add(ownComponent, "_k_session:9", superAltP);
    EXPECT_EQ(hotKeys->grab(1, key::p, superAndAlt), GrabResult::held);
    EXPECT_EQ(ownShortcuts(), 1U);
}

TEST_F(PlasmaHotKeysTest, CountOnlyTheNextPressOfAKeyThatIsHeld) {
    const CallWindow recorder(*session);
    XClient client(*session);
    const WindowFacts facts(client);
    require("the recorder has the focus", [&] { return facts.focus() == recorder.window(); });
    Keyboard keyboard(std::make_shared<KWinInput>(*session));
    x11Connection = x11::X11Connection::open(session->display(), problem);
    x11Keys = std::make_unique<x11::X11HotKeys>(*x11Connection);
    hotKeys->suspend(true);
    for (const int code : {key::leftSuper, key::leftAlt, key::p})
        keyboard.press(code);
    require("the recorder gets the key", [&] { return x11Keys->isDown(key::p); });
    ASSERT_EQ(hotKeys->grab(1, key::p, superAndAlt), GrabResult::held);
    hotKeys->suspend(false);
    const int before = questions;
    // KWin 6 does not repeat the key of a shortcut.
    EXPECT_TRUE(PlasmaSession::generation() >= 6 || waitUntil([&] { return questions > before + 2; }))
        << "KWin repeats the key";
    for (const int code : {key::p, key::leftAlt, key::leftSuper})
        keyboard.release(code);
    // KWin's report of the released key must come before the next press.
    EXPECT_TRUE(holdsFor([&] { return presses().empty(); }, std::chrono::milliseconds(300)));
    strokeP();
    EXPECT_TRUE(isPressed({1}));
}

TEST_F(PlasmaHotKeysTest, SurviveAKWinThatIsRestarted) {
    ASSERT_EQ(hotKeys->grab(1, key::p, superAndAlt), GrabResult::held);
    session->crashCompositor();
    EXPECT_TRUE(waitUntil([] { return ownShortcuts() == 1; }));
    strokeP();
    EXPECT_TRUE(isPressed({1}));
}

} // namespace
} // namespace mirrolet::platform::desktop::wayland
