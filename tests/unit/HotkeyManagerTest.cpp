#include "hotkeys/HotkeyManager.h"

#include "DesktopTest.h"
#include "platform/carbon/KeyCodes.h"
#include "platform/dispatch/DispatchQueue.h"

#include <map>
#include <set>
#include <vector>

namespace mirrolet {
namespace {

using namespace platform;
using desktop::fake::FakeHotKeys;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

// Option-Command-P and Option-Command-F, as stored and as key codes of the keyboard.
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

    /// The log of a registration.
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
    desktop.hotKeys().press(pressF);
    desktop.hotKeys().press(pressP);
    EXPECT_THAT(presses, IsEmpty()) << "they come on a later turn";
    time.run();
    EXPECT_THAT(presses, ElementsAre(2, 1)) << "once each: there is one handler";

    manager->registerHotkey(HotkeyID::togglePiPVisibility, 49, controlKey | shiftKey);
    EXPECT_FALSE(desktop.hotKeys().press(pressP));
    EXPECT_TRUE(desktop.hotKeys().press({57, desktop::controlModifier | desktop::shiftModifier}));
    manager->unregisterHotkey(HotkeyID::pipFrontmostWindow);
    manager->unregisterHotkey(HotkeyID::pipFrontmostWindow);
    EXPECT_FALSE(desktop.hotKeys().press(pressF));
    time.run();
    EXPECT_THAT(presses, ElementsAre(2, 1, 1));
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
        manager->registerHotkey(HotkeyID::togglePiPVisibility, 49,
                                0); // The former shortcut is released in any case.
        EXPECT_EQ(registered(HotkeyID::togglePiPVisibility, row.key, row.modifiers), failure(1, row.status));
        EXPECT_THAT(desktop.hotKeys().held(), ElementsAre(pressF));
    }
    EXPECT_EQ(registered(HotkeyID::togglePiPVisibility, 49, 0), "") << "no modifier at all is fine";
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
        {1 << 16 | 1 << 21 | 1 << 22 | 1 << 23 | 0x108, 0}, // Caps lock, keypad, help, function, device bits.
    };
    for (const auto& [flags, mask] : rows)
        EXPECT_EQ(carbonModifiers(flags), mask) << flags;
}

TEST(HotkeyManagerTestOfKeyCodes, EveryKeyHasOneCodeThatLeadsBackToIt) {
    std::set<std::uint32_t> codes;
    for (std::uint32_t evdev = 1; evdev <= 247; ++evdev) {
        const auto code = virtualFromEvdev(evdev);
        ASSERT_TRUE(code) << evdev;
        EXPECT_TRUE(codes.insert(*code).second) << evdev;
        EXPECT_EQ(evdevFromVirtual(*code), evdev);
    }
    EXPECT_EQ(virtualFromEvdev(0), std::nullopt);
    EXPECT_EQ(virtualFromEvdev(0x10000), std::nullopt);
    for (const auto code : {52u, 66u, 127u, 0x100u, 0x100u + 30, 0x100u + 0x300, 4294967295u})
        EXPECT_EQ(evdevFromVirtual(code), std::nullopt) << code;
}

TEST(HotkeyManagerTestOfKeyCodes, ThePlacesOfTheCommonKeysAreThoseOfTheStandardKeyboard) {
    // The letters at both ends of each row, and the keys of the recorder and of the default shortcuts.
    const std::map<std::uint32_t, std::uint32_t> evdevByVirtual = {
        {12, 16},   {35, 25},   {0, 30},    {37, 38},   {6, 44},    {46, 50},   {3, 33},   {18, 2},
        {29, 11},   {36, 28},   {48, 15},   {49, 57},   {51, 14},   {53, 1},    {122, 59}, {111, 88},
        {123, 105}, {124, 106}, {125, 108}, {126, 103}, {115, 102}, {119, 107}, {76, 96},  {82, 82}};
    for (const auto& [code, evdev] : evdevByVirtual)
        EXPECT_EQ(evdevFromVirtual(code), evdev) << code;
}

} // namespace
} // namespace mirrolet
