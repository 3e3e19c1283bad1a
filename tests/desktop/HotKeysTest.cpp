#include "platform/desktop/x11/keys/X11HotKeys.h"
#include "platform/desktop/x11/server/XcbXkb.h"
#include "tests/desktop/harness/CallWindow.h"
#include "tests/desktop/harness/Keyboard.h"
#include "tests/desktop/harness/WindowFacts.h"
#include "tests/desktop/harness/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <mutex>

namespace mirrolet::platform::desktop::x11 {
namespace {

using namespace harness;
using testing::ElementsAre;

constexpr std::uint32_t mirrorHotKey = 1;
constexpr std::uint32_t fence = 2;
constexpr std::uint32_t superAndAlt = superModifier | altModifier;
constexpr std::uint8_t fromEvdev = 8;
constexpr int modifierCount = 8;
// The indexes of "mod3" and "mod4" among the X server's eight modifiers. No keyboard layout uses "mod3".
constexpr int thirdModifier = 5;
constexpr int fourthModifier = 6;

class HotKeysTest : public testing::Test {
  protected:
    HotKeysTest() {
        connection = X11Connection::open(server.display(), problem);
        repeats = connection->subscribe<KeyPress>([this](const auto&) { ++keyEvents; });
        hotKeys = std::make_unique<X11HotKeys>(*connection);
        hotKeys->setPressed([this](std::uint32_t number) {
            const std::lock_guard guard(lock);
            pressed.push_back(number);
        });
        connection->start();
    }

    ~HotKeysTest() override {
        hotKeys.reset();
        repeats = {};
    }

    std::vector<std::uint32_t> presses() {
        const std::lock_guard guard(lock);
        return pressed;
    }

    /// Returns the numbers of all hot keys that were pressed so far. First presses one more hot key (`fence`)
    /// and waits for it. Presses arrive in order, so all earlier presses have arrived then.
    std::vector<std::uint32_t> pressesUntilFence() {
        EXPECT_EQ(hotKeys->grab(fence, key::tab, 0), GrabResult::held);
        keyboard.stroke({key::tab});
        EXPECT_TRUE(waitUntil([this] { return !presses().empty() && presses().back() == fence; }));
        hotKeys->release(fence);
        auto before = presses();
        before.pop_back();
        return before;
    }

    /// Grabs the key with exactly the modifiers in `state`, as another program would. Returns true if no
    /// other client holds that grab. Releases the grab at once unless `keep` is set. Stops the X server from
    /// serving other clients meanwhile, so that the hot keys cannot lose a grab to this attempt.
    bool anotherProgramCanGrab(int evdevCode, std::uint16_t state, bool keep) {
        const auto code = static_cast<std::uint8_t>(evdevCode + fromEvdev);
        xcb_grab_server(other.xcb());
        const Reply<xcb_generic_error_t> error(
            xcb_request_check(other.xcb(), xcb_grab_key_checked(other.xcb(), 0, other.root(), state, code,
                                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
        if (!error && !keep)
            xcb_ungrab_key(other.xcb(), code, other.root(), state);
        xcb_ungrab_server(other.xcb());
        other.sync();
        return !error;
    }

    /// Waits until another program can grab the key. The X server may handle the other program's attempt
    /// before the release of the hot keys' grab, because it serves connections in any order.
    bool becomesFree(int evdevCode, std::uint16_t state) {
        return waitUntil([=, this] { return anotherProgramCanGrab(evdevCode, state, false); });
    }

    /// Moves all keys of one modifier to another modifier, or removes them, as a user's keyboard settings do.
    void moveModifier(int from, std::optional<int> to) {
        const Reply<xcb_get_modifier_mapping_reply_t> map(
            xcb_get_modifier_mapping_reply(other.xcb(), xcb_get_modifier_mapping(other.xcb()), nullptr));
        const int width = map->keycodes_per_modifier;
        std::vector<xcb_keycode_t> keys(xcb_get_modifier_mapping_keycodes(map.get()),
                                        xcb_get_modifier_mapping_keycodes(map.get()) + modifierCount * width);
        for (int i = 0; i < width; ++i) {
            const auto moved = std::exchange(keys[from * width + i], 0);
            if (to)
                keys[*to * width + i] = moved;
        }
        const Reply<xcb_set_modifier_mapping_reply_t> done(xcb_set_modifier_mapping_reply(
            other.xcb(), xcb_set_modifier_mapping(other.xcb(), map->keycodes_per_modifier, keys.data()),
            nullptr));
        ASSERT_TRUE(done && done->status == XCB_MAPPING_STATUS_SUCCESS);
    }

    void lockGroup(std::uint8_t group) {
        const Reply<xcb_xkb_use_extension_reply_t> used(
            xcb_xkb_use_extension_reply(other.xcb(), xcb_xkb_use_extension(other.xcb(), 1, 0), nullptr));
        xcb_xkb_latch_lock_state(other.xcb(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0);
        other.sync();
    }

    XServer server;
    XClient other{server};
    Keyboard keyboard{other};
    std::string problem;
    std::unique_ptr<X11Connection> connection;
    X11Connection::Subscription repeats;
    std::unique_ptr<X11HotKeys> hotKeys;
    std::atomic<int> keyEvents = 0;

  private:
    std::mutex lock;
    std::vector<std::uint32_t> pressed;
};

struct KeyboardState {
    const char* name;
    const char* layout;
    std::uint8_t group; ///< The index of the active layout.
    std::vector<int> locks;
};

void PrintTo(const KeyboardState& state, std::ostream* out) {
    *out << state.name;
}

class HotKeysTestInEveryState : public HotKeysTest, public testing::WithParamInterface<KeyboardState> {};

TEST_P(HotKeysTestInEveryState, AreHeardByTheirPlaceAndWithExactlyTheirModifiers) {
    setKeyboardLayout(other, GetParam().layout);
    lockGroup(GetParam().group);
    for (const int lock : GetParam().locks)
        keyboard.stroke({lock});
    ASSERT_EQ(hotKeys->grab(mirrorHotKey, key::p, superAndAlt), GrabResult::held);

    keyboard.stroke({key::leftSuper, key::leftAlt, key::p});
    keyboard.stroke({key::leftSuper, key::p});
    keyboard.stroke({key::leftSuper, key::leftShift, key::leftAlt, key::p});
    keyboard.stroke({key::leftSuper, key::leftAlt, key::f});
    for (const int lock : GetParam().locks)
        keyboard.stroke({lock}); // Unlocks again, because the hot key `fence` is pressed without a lock.
    EXPECT_THAT(pressesUntilFence(), ElementsAre(mirrorHotKey));
}

INSTANTIATE_TEST_SUITE_P(Keyboards, HotKeysTestInEveryState,
                         testing::Values(KeyboardState{"plain", "us", 0, {}},
                                         KeyboardState{"bothLocks", "us", 0, {key::numLock, key::capsLock}},
                                         KeyboardState{"russianWithNumLock", "ru", 0, {key::numLock}},
                                         KeyboardState{"secondOfTwoLayouts", "us,ru", 1, {key::capsLock}}),
                         [](const auto& each) { return each.param.name; });

TEST_F(HotKeysTest, HeldDownIsOnePress) {
    ASSERT_EQ(hotKeys->grab(mirrorHotKey, key::p, superAndAlt), GrabResult::held);
    for (const int code : {key::leftSuper, key::leftAlt, key::p})
        keyboard.press(code);
    EXPECT_TRUE(waitUntil([this] { return keyEvents >= 4; })) << "the server does not repeat keys";
    for (const int code : {key::p, key::leftAlt, key::leftSuper})
        keyboard.release(code);
    keyboard.stroke({key::leftSuper, key::leftAlt, key::p});
    EXPECT_THAT(pressesUntilFence(), ElementsAre(mirrorHotKey, mirrorHotKey));
}

class HotKeysTestOnHeldKeys : public HotKeysTest, public testing::WithParamInterface<bool> {};

TEST_P(HotKeysTestOnHeldKeys, CountOnlyTheNextPress) {
    const bool untilRepeat = GetParam();
    hotKeys->suspend(true); // A shortcut recorder suspends the hot keys while it records.
    ASSERT_EQ(hotKeys->grab(mirrorHotKey, key::p, superAndAlt), GrabResult::held);
    for (const int code : {key::leftSuper, key::leftAlt, key::p})
        keyboard.press(code);
    hotKeys->suspend(false);
    EXPECT_FALSE(anotherProgramCanGrab(key::p, XCB_MOD_MASK_4 | XCB_MOD_MASK_1, false));
    EXPECT_TRUE(!untilRepeat || waitUntil([this] { return keyEvents >= 2; }))
        << "the server does not repeat keys";
    keyboard.release(key::p);
    keyboard.stroke({key::p});
    for (const int code : {key::leftAlt, key::leftSuper})
        keyboard.release(code);
    EXPECT_THAT(pressesUntilFence(), ElementsAre(mirrorHotKey));
}

INSTANTIATE_TEST_SUITE_P(Released, HotKeysTestOnHeldKeys, testing::Bool(),
                         [](const auto& each) { return each.param ? "AfterARepeat" : "AtOnce"; });

TEST_F(HotKeysTest, AreNotPressedByAnEventThatAClientSent) {
    ASSERT_EQ(hotKeys->grab(mirrorHotKey, key::p, superAndAlt), GrabResult::held);
    xcb_key_press_event_t press{};
    press.response_type = XCB_KEY_PRESS;
    press.detail = key::p + fromEvdev;
    press.state = XCB_MOD_MASK_4 | XCB_MOD_MASK_1;
    press.event = connection->ownWindow();
    press.root = other.root();
    xcb_send_event(other.xcb(), 0, connection->ownWindow(), XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&press));
    other.sync();
    EXPECT_TRUE(waitUntil([this] { return keyEvents == 1; })) << "the event does not arrive";
    EXPECT_THAT(pressesUntilFence(), testing::IsEmpty());
    keyboard.stroke({key::leftSuper, key::leftAlt, key::p});
    EXPECT_TRUE(waitUntil([this] { return presses().back() == mirrorHotKey; })) << "the sent press is held";
}

TEST_F(HotKeysTest, TakenInOneLockStateLeavesNothingGrabbed) {
    constexpr std::uint16_t raw = XCB_MOD_MASK_4 | XCB_MOD_MASK_1;
    ASSERT_TRUE(anotherProgramCanGrab(key::p, raw | XCB_MOD_MASK_2, true)); // Mod2 is NumLock.
    EXPECT_EQ(hotKeys->grab(mirrorHotKey, key::p, superAndAlt), GrabResult::taken);
    for (const int locks : {0, XCB_MOD_MASK_LOCK + 0, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2})
        EXPECT_TRUE(becomesFree(key::p, static_cast<std::uint16_t>(raw | locks))) << locks;

    EXPECT_EQ(hotKeys->grab(mirrorHotKey, key::f, superAndAlt), GrabResult::held);
    EXPECT_EQ(hotKeys->grab(fence, key::f, superAndAlt), GrabResult::taken) << "of our own";
    hotKeys->release(mirrorHotKey);
    EXPECT_TRUE(becomesFree(key::f, raw));
    EXPECT_EQ(hotKeys->grab(fence, key::f, superAndAlt), GrabResult::held);
    hotKeys.reset();
    EXPECT_TRUE(becomesFree(key::f, raw)) << "after the end";
}

TEST_F(HotKeysTest, RefuseWhatTheKeyboardDoesNotHave) {
    EXPECT_EQ(hotKeys->grab(mirrorHotKey, 248, superAndAlt), GrabResult::invalid);
    EXPECT_EQ(hotKeys->grab(mirrorHotKey, 0xffffffff, superAndAlt), GrabResult::invalid);
    EXPECT_EQ(hotKeys->grab(mirrorHotKey, key::p, 16), GrabResult::invalid);
    const Reply<xcb_set_modifier_mapping_reply_t> none(xcb_set_modifier_mapping_reply(
        other.xcb(), xcb_set_modifier_mapping(other.xcb(), 0, nullptr), nullptr));
    EXPECT_TRUE(waitUntil(
        [this] { return hotKeys->grab(mirrorHotKey, key::p, superAndAlt) == GrabResult::invalid; }));
    EXPECT_EQ(hotKeys->grab(mirrorHotKey, key::p, 0), GrabResult::held);
}

TEST_F(HotKeysTest, FollowAChangedModifierMapping) {
    constexpr std::uint16_t before = XCB_MOD_MASK_4 | XCB_MOD_MASK_1;
    constexpr std::uint16_t after = XCB_MOD_MASK_3 | XCB_MOD_MASK_1;
    ASSERT_EQ(hotKeys->grab(mirrorHotKey, key::p, superAndAlt), GrabResult::held);
    moveModifier(fourthModifier, thirdModifier);
    EXPECT_TRUE(waitUntil([this] { return !anotherProgramCanGrab(key::p, after, false); }));
    EXPECT_TRUE(becomesFree(key::p, before));
    keyboard.stroke({key::leftSuper, key::leftAlt, key::p});
    EXPECT_THAT(pressesUntilFence(), ElementsAre(mirrorHotKey));

    // A hot key is not grabbed while the keyboard has no key for its modifier.
    moveModifier(thirdModifier, std::nullopt);
    EXPECT_TRUE(becomesFree(key::p, after));
    setKeyboardLayout(other, "us");
    EXPECT_TRUE(waitUntil([this] { return !anotherProgramCanGrab(key::p, before, false); }));
}

TEST_F(HotKeysTest, LetKeysThroughWhileARecorderListens) {
    const CallWindow window(server);
    xcb_set_input_focus(other.xcb(), XCB_INPUT_FOCUS_PARENT, window.window(), XCB_CURRENT_TIME);
    ASSERT_EQ(hotKeys->grab(mirrorHotKey, key::f, 0), GrabResult::held);
    keyboard.stroke({key::f});
    hotKeys->suspend(true);
    ASSERT_TRUE(becomesFree(key::f, 0));
    keyboard.stroke({key::f});
    EXPECT_TRUE(waitUntil([&] { return window.keys().size() == 2; }));
    // If a hot key is added while the hot keys are suspended, it is suspended too.
    EXPECT_EQ(hotKeys->grab(fence, key::p, 0), GrabResult::held);
    EXPECT_TRUE(becomesFree(key::p, 0));
    hotKeys->release(fence);
    hotKeys->suspend(false);
    keyboard.stroke({key::f});
    EXPECT_THAT(pressesUntilFence(), ElementsAre(mirrorHotKey, mirrorHotKey));
    EXPECT_THAT(window.keys(), ElementsAre("key 41 press", "key 41 release"));
}

} // namespace
} // namespace mirrolet::platform::desktop::x11
