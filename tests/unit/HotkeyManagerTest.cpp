#include "hotkeys/HotkeyManager.h"

#include "DesktopTest.h"
#include "platform/carbon/KeyCodes.h"
#include "platform/dispatch/DispatchQueue.h"

#include <array>
#include <vector>

namespace mirrolet {
namespace {

using namespace platform;
using desktop::fake::FakeHotKeys;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

// The shortcuts Super+Alt+P and Super+Alt+F. `keyP`, `keyF` and `optionCommand` are values in the settings.
// `pressP` and `pressF` are evdev key codes and modifiers.
constexpr std::uint32_t keyP = 35;
constexpr std::uint32_t keyF = 3;
constexpr std::uint32_t optionCommand = 2304;
constexpr FakeHotKeys::Combination pressP = {25, desktop::superModifier | desktop::altModifier};
constexpr FakeHotKeys::Combination pressF = {33, desktop::superModifier | desktop::altModifier};

class HotkeyManagerTest : public DesktopTest {
  protected:
    HotkeyManagerTest() {
        manager->onHotkeyPressed = [this](HotkeyID id) {
            EXPECT_EQ(time.runningQueue(), "main");
            presses.push_back(rawValue(id));
        };
        atEnd.emplace_back([this] { manager = nullptr; });
    }

    /// Registers the shortcut. Returns what is logged meanwhile.
    std::string registered(HotkeyID id, std::uint32_t key, std::uint32_t modifiers) {
        testing::internal::CaptureStderr();
        manager->registerHotkey(id, key, modifiers);
        return testing::internal::GetCapturedStderr();
    }

    std::shared_ptr<HotkeyManager> manager = HotkeyManager::make();
    std::vector<std::uint32_t> presses;
};

TEST_F(HotkeyManagerTest, EachShortcutReportsItsOwnPressesAndAReplacedOneNone) {
    manager->registerHotkey(HotkeyID::togglePiPVisibility, keyP, optionCommand);
    manager->registerHotkey(HotkeyID::togglePiPVisibility, keyP, optionCommand);
    manager->registerHotkey(HotkeyID::pipFrontmostWindow, keyF, optionCommand);
    EXPECT_THAT(desktop.hotKeys().held(), UnorderedElementsAre(pressP, pressF));
    EXPECT_THAT(desktop.hotKeys().titles, testing::Contains(testing::Pair(testing::_, "Show/hide PiP")));
    EXPECT_THAT(desktop.hotKeys().titles, testing::Contains(testing::Pair(testing::_, "Start/close PiP")));
    desktop.hotKeys().press(pressF);
    desktop.hotKeys().press(pressP);
    DispatchQueue::main().async([this] { presses.push_back(0); });
    time.run();
    EXPECT_THAT(presses, ElementsAre(0, 2, 1)) << "once each, after the event handler has returned";

    manager->registerHotkey(HotkeyID::togglePiPVisibility, 49, controlKey | shiftKey);
    EXPECT_FALSE(desktop.hotKeys().press(pressP));
    EXPECT_TRUE(desktop.hotKeys().press({57, desktop::controlModifier | desktop::shiftModifier}));
    manager->unregisterHotkey(HotkeyID::pipFrontmostWindow);
    manager->unregisterHotkey(HotkeyID::pipFrontmostWindow);
    EXPECT_FALSE(desktop.hotKeys().press(pressF));
    time.run();
    EXPECT_THAT(presses, ElementsAre(0, 2, 1, 1));
}

TEST_F(HotkeyManagerTest, AShortcutThatCannotBeHadIsSaidOnceAndHoldsNothing) {
    manager->registerHotkey(HotkeyID::pipFrontmostWindow, keyF, optionCommand);
    desktop.hotKeys().take(pressP);
    desktop.hotKeys().removeKey(30);
    const auto failure = [](int id, int status) {
        return "HotkeyManager: RegisterEventHotKey failed for id " + std::to_string(id) + " with status " +
               std::to_string(status) + "\n";
    };
    const struct {
        const char* what;
        std::uint32_t key;
        std::uint32_t modifiers;
        int status;
    } rows[] = {
        {"held by another program", keyP, optionCommand, -9878},
        {"held by the other shortcut", keyF, optionCommand, -9878},
        {"a key that this keyboard lacks", 0, optionCommand, -50},
        {"no key code", 52, optionCommand, -50},
        {"far from any key code", 4294967295, optionCommand, -50},
        {"an unknown modifier", 1, 1u << 20, -50},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        // Registers a shortcut that works. The next line replaces this shortcut by one that cannot be
        // registered. The replaced shortcut must then not stay grabbed.
        manager->registerHotkey(HotkeyID::togglePiPVisibility, 49, 0);
        EXPECT_EQ(registered(HotkeyID::togglePiPVisibility, row.key, row.modifiers), failure(1, row.status));
        EXPECT_THAT(desktop.hotKeys().held(), ElementsAre(pressF));
    }
    for (const auto& [carbon, modifier] :
         {std::pair(0U, 0U), std::pair(256U, 0U + desktop::superModifier),
          std::pair(512U, 0U + desktop::shiftModifier), std::pair(2048U, 0U + desktop::altModifier),
          std::pair(4096U, 0U + desktop::controlModifier)}) {
        EXPECT_EQ(registered(HotkeyID::togglePiPVisibility, 49, carbon), "");
        EXPECT_THAT(desktop.hotKeys().held(), UnorderedElementsAre(pressF, std::pair(57U, modifier)));
    }
}

TEST_F(HotkeyManagerTest, APressOnItsWayIsDroppedWithItsShortcut) {
    manager->registerHotkey(HotkeyID::togglePiPVisibility, keyP, optionCommand);
    desktop.hotKeys().press(pressP);
    manager->unregisterHotkey(HotkeyID::togglePiPVisibility);
    time.run();
    EXPECT_THAT(presses, IsEmpty());

    manager->onHotkeyPressed = nullptr;
    manager->registerHotkey(HotkeyID::togglePiPVisibility, keyP, optionCommand);
    EXPECT_TRUE(desktop.hotKeys().press(pressP));
    time.run();
    desktop.hotKeys().press(pressP);
    manager = nullptr;
    time.run();
}

TEST_F(HotkeyManagerTest, EventsThatAreNotItsOwnAreIgnored) {
    manager->registerHotkey(HotkeyID::togglePiPVisibility, keyP, optionCommand);
    const EventHotKeyID foreign[] = {{fourCharacterCode("abcd"), 1}, {fourCharacterCode("qHtK"), 3}};
    std::uint32_t key = 1;
    std::vector<EventHotKeyRef> references;
    for (const auto& id : foreign) {
        EventHotKeyRef reference = nullptr;
        ASSERT_EQ(RegisterEventHotKey(key++, cmdKey, id, GetApplicationEventTarget(), 0, &reference), noErr);
        references.push_back(reference);
    }
    EXPECT_TRUE(desktop.hotKeys().press({31, desktop::superModifier}));
    EXPECT_TRUE(desktop.hotKeys().press({32, desktop::superModifier}));
    time.run();
    EXPECT_THAT(presses, IsEmpty());
    // The handler that was installed last comes first, and a press that it takes goes no further.
    const auto later = HotkeyManager::make();
    int taken = 0;
    later->onHotkeyPressed = [&taken](HotkeyID) { ++taken; };
    later->registerHotkey(HotkeyID::pipFrontmostWindow, keyF, optionCommand);
    desktop.hotKeys().press(pressF);
    time.run();
    EXPECT_EQ(taken, 1);
    EXPECT_THAT(presses, IsEmpty());
    for (auto* reference : references) {
        EXPECT_EQ(UnregisterEventHotKey(reference), noErr);
        EXPECT_NE(UnregisterEventHotKey(reference), noErr);
    }
}

TEST_F(HotkeyManagerTest, WhileAModeIsPushedTheKeysGoThrough) {
    manager->registerHotkey(HotkeyID::togglePiPVisibility, keyP, optionCommand);
    auto* outer = PushSymbolicHotKeyMode(kHIHotKeyModeAllDisabled);
    auto* inner = PushSymbolicHotKeyMode(kHIHotKeyModeAllDisabled);
    PopSymbolicHotKeyMode(inner);
    PopSymbolicHotKeyMode(inner);
    EXPECT_FALSE(desktop.hotKeys().press(pressP));
    PopSymbolicHotKeyMode(outer);
    EXPECT_TRUE(desktop.hotKeys().press(pressP));
}

TEST(HotkeyManagerTestOfModifiers, KeepsTheFourAndDropsTheRest) {
    const std::uint64_t command = 1 << 20, option = 1 << 19, control = 1 << 18, shift = 1 << 17;
    const std::pair<std::uint64_t, std::uint32_t> rows[] = {
        {0, 0},
        {command, 256},
        {shift, 512},
        {option, 2048},
        {control, 4096},
        {command | shift, 768},
        {control | option | command, 6400},
        {command | option | shift | control, 6912},
        // The flags of Caps Lock, keypad, help key, function key and device are dropped.
        {1 << 16 | 1 << 21 | 1 << 22 | 1 << 23 | 0x108, 0},
    };
    for (const auto& [flags, mask] : rows)
        EXPECT_EQ(carbonModifiers(flags), mask) << flags;
}

TEST(HotkeyManagerTestOfKeyCodes, EveryKeyHasTheCodeOfItsPlaceAndAnyOtherOneOfItsOwn) {
    constexpr std::uint32_t none = 0xff;
    // clang-format off
    // The index is an evdev key code, and the value is the virtual key code of the same key. Each comment
    // names keys of its row.
    constexpr std::array<std::uint32_t, 128> virtualByEvdev = {
        none,  53,  18,  19,  20,  21,  23,  22,  26,  28,  25,  29,  27,  24,  51,  48, // Escape, 1 to Tab
          12,  13,  14,  15,  17,  16,  32,  34,  31,  35,  33,  30,  36,  59,   0,   1, // Q to Return, Ctrl, A
           2,   3,   5,   4,  38,  40,  37,  41,  39,  50,  56,  42,   6,   7,   8,   9, // D to V
          11,  45,  46,  43,  47,  44,  60,  67,  58,  49,  57, 122, 120,  99, 118,  96, // B to Space, F1 to F5
          97,  98, 100, 101, 109,  71, none, 89,  91,  92,  78,  86,  87,  88,  69,  83, // F6 to F10, number pad
          84,  85,  82,  65, none, none, 10, 103, 111,  94, none, none, none, none, none, 95,
          76,  62,  75, none, 61, none, 115, 126, 116, 123, 124, 119, 125, 121, 114, 117, // Enter to Delete
        none,  74,  73,  72, none,  81, none, none, none, none, 104, 102, 93, 55,  54, 110};
    // clang-format on
    constexpr std::array<std::uint32_t, 8> f13ToF20 = {105, 107, 113, 106, 64, 79, 80, 90};
    for (std::uint32_t evdev = 1; evdev <= 0x2ff; ++evdev) {
        auto code = evdev < virtualByEvdev.size() ? virtualByEvdev.at(evdev) : none;
        if (evdev >= 183 && evdev <= 190)
            code = f13ToF20.at(evdev - 183);
        if (code == none)
            code = 0x100 + evdev;
        EXPECT_EQ(virtualFromEvdev(evdev), code) << evdev;
        EXPECT_EQ(evdevFromVirtual(code), evdev) << code;
    }
    EXPECT_EQ(virtualFromEvdev(0), std::nullopt);
    EXPECT_EQ(virtualFromEvdev(0x10000), std::nullopt);
    for (const auto code : {52u, 66u, 127u, 0x100u, 0x100u + 30, 0x100u + 0x300, 4294967295u})
        EXPECT_EQ(evdevFromVirtual(code), std::nullopt) << code;
}

} // namespace
} // namespace mirrolet
