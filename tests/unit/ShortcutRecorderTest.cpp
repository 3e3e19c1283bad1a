#include "platform/appkit/NSViewWidget.h"
#include "platform/carbon/CarbonEvents.h"
#include "settings/ShortcutNames.h"
#include "settings/ShortcutRecorderNSView.h"
#include "tests/unit/DesktopTest.h"
#include "tests/unit/WidgetSearch.h"

#include <QKeyEvent>
#include <QLabel>
#include <QTest>

#include <map>
#include <sstream>

static int beeps = 0;

// Replaces QApplication::beep() by a function that counts, because Qt's offscreen platform makes no sound.
void QApplication::beep() {
    ++beeps;
}

namespace mirrolet {
namespace {

using namespace platform;
using Shortcut = ShortcutRecorderNSView::Shortcut;

class ShortcutRecorderTest : public DesktopTest {
  protected:
    ShortcutRecorderTest() {
        view->setCurrentShortcut({3, 2304});
        view->onShortcutRecorded = [this](std::uint32_t keyCode, std::uint32_t modifiers) {
            recorded.emplace_back(keyCode, modifiers);
        };
        showActive(window);
        widget.setGeometry(0, 0, 130, 24);
    }

    static void click(QWidget& on) { QTest::mouseClick(&on, Qt::LeftButton); }
    /// Sends a key press to the focused widget. `evdevCode` says where the key is on the keyboard, and `key`
    /// says what the key means in the keyboard's layout.
    static void press(std::uint32_t evdevCode, int key, Qt::KeyboardModifiers modifiers,
                      bool repeated = false) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, evdevCode + 8, 0, 0, QString(), repeated);
        QApplication::sendEvent(QApplication::focusWidget(), &event);
    }

    std::shared_ptr<ShortcutRecorderNSView> view = std::make_shared<ShortcutRecorderNSView>();
    QWidget window;
    NSViewWidget& widget = *new NSViewWidget(view, &window);
    QLabel& label = *new QLabel("Shortcut", &window);
    std::vector<Shortcut> recorded;
};

TEST_F(ShortcutRecorderTest, NamesAShortcutByModifiersInAFixedOrderAndTheKeysName) {
    const std::pair<std::uint32_t, const char*> namesFrom[] = {
        {0, "A S D F H G Z X C V"},
        {11, "B Q W E R Y T 1 2 3 4 6 5 = 9 7 - 8 0 ] O U [ I P ↩ L J ' K ; \\ , / N M . ⇥ Space ` ⌫"},
        {96, "F5 F6 F7 F3 F8 F9"},
        {103, "F11"},
        {109, "F10"},
        {111, "F12"},
        {118, "F4"},
        {120, "F2"},
        {122, "F1 ← → ↓ ↑"},
    };
    std::map<std::uint32_t, std::string> names;
    for (const auto& [first, list] : namesFrom) {
        std::istringstream words(list);
        std::string name;
        for (auto code = first; words >> name; ++code)
            names[code] = name;
    }
    ASSERT_EQ(names.size(), 67u);
    for (std::uint32_t code = 0; code <= 200; ++code) {
        const auto name = names.contains(code) ? names.at(code) : "Key " + std::to_string(code);
        EXPECT_EQ(shortcutDisplayString(code, 0), name);
    }
    EXPECT_EQ(shortcutDisplayString(35, 2304), "⌥⌘P");
    EXPECT_EQ(shortcutDisplayString(49, 4608), "⌃⇧Space");
    EXPECT_EQ(shortcutDisplayString(53, 6912), "⌃⌥⇧⌘Key 53");
}

TEST_F(ShortcutRecorderTest, RecordsTheFirstKeyWithAModifierByItsPlace) {
    struct Case {
        const char* what;
        std::uint32_t evdevCode;
        int key;
        Qt::KeyboardModifiers modifiers;
        bool goesOnRecording;
        std::vector<Shortcut> recorded;
    };
    constexpr auto none = Qt::NoModifier;
    constexpr auto shift = Qt::ShiftModifier, control = Qt::ControlModifier, option = Qt::AltModifier,
                   command = Qt::MetaModifier;
    const Case cases[] = {
        {"Option-Command-P", 25, Qt::Key_P, option | command, false, {{35, 2304}}},
        {"its place on a Russian layout", 25, 0x417, option | command, false, {{35, 2304}}},
        {"Shift alone is a modifier", 30, Qt::Key_A, shift, false, {{0, 512}}},
        {"a shifted digit is its key", 3, Qt::Key_At, shift | control, false, {{19, 4608}}},
        {"all four", 57, Qt::Key_Space, shift | control | option | command, false, {{49, 6912}}},
        {"Tab with a modifier", 15, Qt::Key_Tab, control, false, {{48, 4096}}},
        {"a plain key", 25, Qt::Key_P, none, true, {}},
        {"a plain Tab", 15, Qt::Key_Tab, none, true, {}},
        {"a key of the number pad alone", 79, Qt::Key_1, Qt::KeypadModifier, true, {}},
        {"a modifier key alone", 56, Qt::Key_Alt, none, true, {}},
        {"a modifier key on top of another", 56, Qt::Key_Alt, control, true, {}},
        {"Escape", 1, Qt::Key_Escape, none, false, {}},
        {"Escape with a modifier", 1, Qt::Key_Escape, control, false, {}},
    };
    for (const auto& [what, evdevCode, key, modifiers, goesOnRecording, expected] : cases) {
        SCOPED_TRACE(what);
        recorded.clear();
        click(widget);
        ASSERT_TRUE(view->recording());
        press(evdevCode, key, modifiers);
        EXPECT_EQ(view->recording(), goesOnRecording);
        EXPECT_EQ(std::exchange(beeps, 0), goesOnRecording && key != Qt::Key_Alt ? 1 : 0);
        EXPECT_EQ(recorded, expected);
        if (view->recording())
            click(widget);
    }
}

TEST_F(ShortcutRecorderTest, TakesNoKeyThatIsHeldSinceBefore) {
    constexpr bool repeated = true;
    widget.setFocus();
    press(57, Qt::Key_Space, Qt::NoModifier, repeated);
    EXPECT_FALSE(view->recording());
    press(57, Qt::Key_Space, Qt::NoModifier);
    press(57, Qt::Key_Space, Qt::ControlModifier, repeated);
    press(1, Qt::Key_Escape, Qt::NoModifier, repeated);
    EXPECT_TRUE(view->recording());
    EXPECT_THAT(recorded, testing::IsEmpty());
    click(widget);
}

TEST_F(ShortcutRecorderTest, LetsTheProgramsOwnHotKeysThroughOnlyWhileItRecords) {
    struct Case {
        const char* what;
        std::function<void()> end;
    };
    const Case cases[] = {
        {"a second click", [this] { click(widget); }},
        {"Escape", [] { press(1, Qt::Key_Escape, Qt::NoModifier); }},
        {"a recorded key", [] { press(25, Qt::Key_P, Qt::MetaModifier); }},
        {"the focus going elsewhere", [this] { window.setFocus(); }},
        {"a click on the background", [this] { click(window); }},
        {"a click on a label", [this] { click(label); }},
        {"the window closing", [this] { window.hide(); }},
    };
    for (const auto& [what, end] : cases) {
        SCOPED_TRACE(what);
        showActive(window);
        click(widget);
        EXPECT_TRUE(desktop.hotKeys().isSuspended());
        end();
        EXPECT_FALSE(view->recording());
        EXPECT_FALSE(desktop.hotKeys().isSuspended());
    }
    showActive(window);
    click(widget);
    delete &widget;
    view.reset();
    EXPECT_FALSE(desktop.hotKeys().isSuspended());
}

TEST_F(ShortcutRecorderTest, OnlyOneRecordsAtATimeAndAKeyMeansNothingToAnIdleOne) {
    const auto other = std::make_shared<ShortcutRecorderNSView>();
    auto* otherWidget = new NSViewWidget(other, &window);
    otherWidget->setGeometry(0, 40, 130, 24);
    otherWidget->show();
    click(widget);
    click(*otherWidget);
    EXPECT_FALSE(view->recording());
    EXPECT_TRUE(other->recording());
    EXPECT_TRUE(desktop.hotKeys().isSuspended());
    click(*otherWidget);
    press(25, Qt::Key_P, Qt::MetaModifier);
    EXPECT_THAT(recorded, testing::IsEmpty());
}

TEST_F(ShortcutRecorderTest, IsNamedInTheWordsOfThisKeyboard) {
    desktop.hotKeys().labels[25] = "З";
    view->setCurrentShortcut({35, 2304});
    EXPECT_EQ(view->toolTip, "Super+Alt+З");
    view->setCurrentShortcut({49, 4608});
    EXPECT_EQ(view->accessibilityValue, "Ctrl+Shift+Space"); // The fake layout has no label for Space.
    view->setCurrentShortcut({35, 6912});
    EXPECT_EQ(view->toolTip, "Super+Ctrl+Alt+Shift+З");
}

TEST_F(ShortcutRecorderTest, ShowsAndTellsThatItRecords) {
    const QImage idle = widget.grab().toImage();
    click(widget);
    EXPECT_NE(widget.grab().toImage(), idle);
    EXPECT_EQ(view->accessibilityValue, "Press shortcut…");
    click(widget);
    EXPECT_EQ(widget.grab().toImage(), idle);
    EXPECT_EQ(view->accessibilityValue, view->toolTip);
}

} // namespace
} // namespace mirrolet
