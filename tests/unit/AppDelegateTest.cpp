#include "app/AppDelegate.h"

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSMenu.h"
#include "platform/appkit/NativeMenuItem.h"
#include "tests/unit/DesktopTest.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

namespace mirrolet {
namespace {

using namespace platform;
using desktop::WindowRow;

constexpr desktop::WindowNumber callNumber = 77;
constexpr desktop::WindowNumber editorWindow = 78;
constexpr std::int32_t messengerPid = 4001;
constexpr std::int32_t editorPid = 4002;
// The default shortcuts Super+Alt+P and Super+Alt+F. 25 and 33 are the evdev codes of the keys P and F.
const desktop::fake::FakeHotKeys::Combination showHide{25, desktop::superModifier | desktop::altModifier};
const desktop::fake::FakeHotKeys::Combination startClose{33, desktop::superModifier | desktop::altModifier};

class AppDelegateTest : public DesktopTest {
  protected:
    AppDelegateTest() {
        desktop.applications().add({messengerPid, "WhatsApp", "net.whatsapp.WhatsApp"});
        desktop.applications().add({editorPid, "Editor", "org.example.Editor"});
        desktop.capture().setPicture(callNumber, {400, 300}, 0x101010);
        desktop.capture().setPicture(editorWindow, {800, 600}, 0x202020);
        atEnd.emplace_back([this] {
            delegate->applicationWillTerminate();
            time.run();
            delegate.reset();
        });
    }

    void launch() {
        delegate->applicationDidFinishLaunching();
        time.run();
    }
    void press(const desktop::fake::FakeHotKeys::Combination& keys) {
        desktop.hotKeys().press(keys);
        time.run();
    }
    void callAppears() {
        desktop.windowList().setWindows({{call, editor}});
        time.advance(2);
    }
    void callEnds() {
        desktop.windowList().setWindows({{editor}});
        time.advance(2);
    }
    void accept() {
        delegate->promptPanel->respond(true);
        time.run();
    }
    std::string promptTitle() const {
        auto* content =
            delegate->promptPanel ? delegate->promptPanel->contentView()->hostedWidget() : nullptr;
        return content ? content->findChildren<QLabel*>().first()->text().toStdString() : "";
    }
    NSMenuItem& entry(std::size_t index) { return *delegate->statusItem->menu()->items().at(index); }
    void choose(std::size_t index) { entry(index).native().entry.trigger(); }
    std::optional<desktop::WindowNumber> mirrored() const {
        return delegate->pipController && delegate->pipController->panel
                   ? std::optional(delegate->pipController->windowID)
                   : std::nullopt;
    }
    /// Waits for the next alert and presses a button. Stores in `alert` the alert's texts, its default button
    /// and the button that Escape presses.
    void answerNextAlert(const QString& button) {
        QTimer::singleShot(0, [this, button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box)
                return;
            for (const auto& text : {box->text(), box->informativeText(), box->defaultButton()->text(),
                                     box->escapeButton()->text()})
                alert.push_back(text.toStdString());
            for (auto* each : box->buttons())
                if (each->text() == button)
                    return each->click();
            box->reject();
        });
    }

    const WindowRow call{callNumber, {10, 10, 400, 300}, 0, messengerPid, "WhatsApp", "Video Call"};
    const WindowRow editor{editorWindow, {0, 0, 800, 600}, 0, editorPid, "Editor", "notes"};
    std::shared_ptr<AppDelegate> delegate = AppDelegate::make();
    std::vector<std::string> alert;
};

TEST_F(AppDelegateTest, AClosedMirrorStaysTheSessionUntilTheShortcutClearsIt) {
    launch();
    callAppears();
    accept();
    delegate->pipController->panel->closeButtonTapped();
    time.run();
    EXPECT_TRUE(delegate->activeSession);
    choose(1); // During a session "PiP Frontmost Window" has no effect.
    EXPECT_EQ(delegate->promptPanel, nullptr);
    press(showHide);
    SettingsStore::shared().setPipAlwaysOnTop(false);
    time.run();
    EXPECT_EQ(mirrored(), std::nullopt);
    press(startClose);
    EXPECT_FALSE(delegate->activeSession);
    EXPECT_EQ(mirrored(), std::nullopt);
    desktop.applications().setFrontmost(editorPid);
    press(startClose);
    EXPECT_EQ(mirrored(), editorWindow);
}

TEST_F(AppDelegateTest, AfterEachEndTheNextCallIsOfferedAndDuringASessionNone) {
    launch();
    const std::vector<std::function<void()>> ends = {
        [this] { delegate->promptPanel->respond(false); },
        [this] { time.advance(15); },
        [this] { callEnds(); },
        [this] {
            accept();
            callEnds();
        },
        [this] {
            accept();
            desktop.capture().destroyWindow(callNumber);
            time.advance(0.2);
        },
        [] {},
    };
    for (const auto& end : ends) {
        SCOPED_TRACE(&end - ends.data());
        callAppears();
        ASSERT_EQ(promptTitle(), "Video Call Detected");
        end();
        EXPECT_EQ(delegate->activeSession, &end == &ends.back());
        EXPECT_EQ(delegate->promptPanel != nullptr, &end == &ends.back());
        EXPECT_EQ(mirrored(), std::nullopt);
        callEnds();
    }
    press(startClose);
    callAppears();
    EXPECT_EQ(delegate->promptPanel, nullptr);
    EXPECT_EQ(mirrored(), editorWindow);
}

TEST_F(AppDelegateTest, AMirrorThatBeganAmongNormalWindowsRisesWhenKeptOnTop) {
    SettingsStore::shared().setPipAlwaysOnTop(false);
    launch();
    callAppears();
    accept();
    SettingsStore::shared().setPipAlwaysOnTop(true);
    time.run();
    EXPECT_EQ(delegate->pipController->panel->level(), NSWindowLevel::floating);
}

TEST_F(AppDelegateTest, TheStartCloseShortcutAsksNothingAndDismissesAPrompt) {
    launch();
    press(startClose); // There is no window to mirror. No alert is shown.
    EXPECT_FALSE(delegate->activeSession);
    callAppears();
    press(startClose);
    EXPECT_EQ(delegate->promptPanel, nullptr);
    EXPECT_FALSE(delegate->activeSession);
    // The frontmost application has no window, so the largest window of any application is mirrored.
    desktop.applications().setFrontmost(9999);
    press(startClose);
    EXPECT_EQ(mirrored(), editorWindow);
    press(startClose);
    EXPECT_EQ(mirrored(), std::nullopt);
}

TEST_F(AppDelegateTest, TheShowHideShortcutHidesAndShowsTheSamePanel) {
    launch();
    press(showHide); // Has no effect without a session.
    callAppears();
    press(showHide); // Has no effect on a prompt.
    accept();
    const auto panel = delegate->pipController->panel;
    press(showHide);
    EXPECT_FALSE(panel->isVisible());
    EXPECT_TRUE(delegate->activeSession);
    press(showHide);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(delegate->pipController->panel, panel);
}

TEST_F(AppDelegateTest, TheMenuHasItsEntriesAndTheFirstOneTellsTheTruth) {
    SettingsStore::shared().setStartMonitoringOnLaunch(false);
    launch();
    ASSERT_EQ(delegate->statusItem->menu()->items().size(), 6u);
    EXPECT_EQ(entry(0).title(), "Monitoring Paused");
    EXPECT_EQ(entry(1).title(), "PiP Frontmost Window");
    EXPECT_EQ(entry(3).title(), "Settings…");
    EXPECT_EQ(entry(5).title(), "Quit Mirrolet");
    choose(3);
    ASSERT_TRUE(delegate->settingsWindow);
    EXPECT_EQ(delegate->settingsWindow->title(), "Mirrolet Settings");
    choose(0);
    EXPECT_EQ(entry(0).title(), "Monitoring Active");
    callAppears();
    accept();
    choose(0); // Pausing the monitoring closes the mirror.
    time.run();
    EXPECT_EQ(entry(0).title(), "Monitoring Paused");
    EXPECT_EQ(mirrored(), std::nullopt);
}

TEST_F(AppDelegateTest, TheMenuEntryAsksFirstAndSaysWhenThereIsNoWindow) {
    launch();
    answerNextAlert("OK");
    choose(1);
    EXPECT_THAT(alert, testing::ElementsAre(
                           "No Window Found",
                           "Bring the app you'd like to mirror to the front, then try again.", "OK", "OK"));
    EXPECT_FALSE(delegate->activeSession);
    desktop.windowList().setWindows({{editor}});
    choose(1);
    ASSERT_EQ(promptTitle(), "Editor Window Detected");
    accept();
    EXPECT_EQ(mirrored(), editorWindow);
}

TEST_F(AppDelegateTest, WithoutPermissionAnAcceptedPromptEndsInTheAlert) {
    desktop.capture().setPermitted(false);
    launch();
    for (const auto* answer : {"Open System Settings", "Cancel"}) {
        callAppears();
        answerNextAlert(answer);
        accept();
        EXPECT_EQ(mirrored(), std::nullopt);
        EXPECT_FALSE(delegate->activeSession);
        callEnds();
    }
    const std::vector<std::string> once = {
        "Screen Recording Access Needed",
        "Mirrolet needs Screen Recording permission to mirror windows into a floating PiP overlay. Grant "
        "access in "
        "System Settings > Privacy & Security > Screen Recording, then relaunch Mirrolet.",
        "Open System Settings", "Cancel"};
    EXPECT_EQ(std::vector(alert.begin(), alert.begin() + 4), once);
    EXPECT_EQ(alert.size(), 2 * once.size());
}

TEST_F(AppDelegateTest, ChangedSettingsAreTakenOverAndUnrelatedOnesTouchNothing) {
    auto& store = SettingsStore::shared();
    launch();
    callAppears();
    accept();
    const int grabs = desktop.hotKeys().grabsMade();
    const int reads = desktop.windowList().reads();
    store.setPromptTimeout(15);
    store.setShortcutKeyCode(store.shortcutKeyCode()); // Stores the same shortcut again.
    store.setShortcutModifiers(store.shortcutModifiers());
    time.run();
    EXPECT_EQ(desktop.hotKeys().grabsMade(), grabs);
    EXPECT_EQ(desktop.windowList().reads(), reads);

    store.setShortcutKeyCode(0); // Key code 0 is A.
    time.run();
    const desktop::fake::FakeHotKeys::Combination changed{30, showHide.second};
    EXPECT_THAT(desktop.hotKeys().held(), testing::UnorderedElementsAre(changed, startClose));
    store.setShortcutKeyCode(35);            // Changes the shortcut back to P.
    store.setPipFrontmostShortcutKeyCode(1); // Key code 1 is S.
    time.run();
    const desktop::fake::FakeHotKeys::Combination other{31, startClose.second};
    EXPECT_THAT(desktop.hotKeys().held(), testing::UnorderedElementsAre(showHide, other));
    store.setPollInterval(5);
    time.run();
    EXPECT_EQ(desktop.windowList().reads(), reads + 1); // The new poll timer polls at once.
    EXPECT_EQ(mirrored(), callNumber);
    store.setPipAlwaysOnTop(false);
    time.run();
    EXPECT_EQ(delegate->pipController->panel->level(), NSWindowLevel::normal);
}

TEST_F(AppDelegateTest, ItLetsGoOfWhatItOwnsInTheOrderOfItsMembers) {
    launch();
    callAppears();
    accept();
    delegate->applicationWillTerminate();
    EXPECT_FALSE(delegate->windowMonitor->isMonitoring());
    EXPECT_EQ(mirrored(), std::nullopt);
    std::vector<std::string> gone;
    const auto watch = [&gone](auto& owner, const char* name) {
        owner = {owner.get(), [&gone, name, kept = owner](auto*) { gone.emplace_back(name); }};
    };
    watch(delegate->statusItem, "item");
    watch(delegate->windowMonitor, "monitor");
    watch(delegate->hotkeyManager, "hot keys");
    watch(delegate->pipController, "mirror");
    delegate = AppDelegate::make();
    EXPECT_THAT(gone, testing::ElementsAre("item", "monitor", "hot keys", "mirror"));
}

} // namespace
} // namespace mirrolet
