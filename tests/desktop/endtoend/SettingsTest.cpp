#include "tests/desktop/endtoend/SettingsSteps.h"
#include "tests/desktop/harness/FrozenThread.h"

#include <csignal>

namespace mirrolet {
namespace {

using namespace harness;
using testing::HasSubstr;

class SettingsTest : public SettingsSteps {
  protected:
    /// Returns the current mirror panel. A change of the always-on-top setting replaces the panel by a new
    /// window, so a test asks again after the change.
    std::optional<xcb_window_t> mirror() {
        for (const xcb_window_t window : program->windows(facts))
            if (window != titled("Mirrolet Settings") && facts.box(window).width < Program::promptWidth)
                return window;
        return std::nullopt;
    }
};

/// Changes the settings with the keyboard alone. The focus is on the tab bar at first.
TEST_F(SettingsTest, AreChangedWithTheKeyboardAlone) {
    openSettings();
    tabTo("page tab list", "General");
    tabTo("check box", "Launch at login");
    keyboard.stroke({key::space});
    require("it starts at login", [this] { return std::filesystem::exists(autostartFile()); });
    tabTo("check box", "Start monitoring when app launches");
    keyboard.stroke({key::space});
    awaitSaved(R"("startMonitoringOnLaunch": true)");
    tabTo("combo box", "Check for windows every");
    keyboard.stroke({key::space}); // Opens the list of choices.
    find("list item", "3 seconds");
    keyboard.stroke({down});
    keyboard.stroke({key::returnKey});
    awaitSaved(R"("pollInterval": 3)");
    tabTo("combo box", "Prompt disappears after");
    keyboard.stroke({up}); // The Up key changes the choice without opening the list.
    awaitSaved(R"("promptTimeout": 10)");

    tabTo("page tab list", "General");
    keyboard.stroke({right});
    tabTo("push button", "Show/hide PiP shortcut");
    keyboard.stroke({key::space});
    keyboard.stroke({key::leftControl, k});
    awaitSaved(R"("shortcutKeyCode": 40)");
    EXPECT_EQ(find("push button", "Show/hide PiP shortcut").description, "Ctrl+K");
    EXPECT_TRUE(isGrabbed(k, XCB_MOD_MASK_CONTROL));
    EXPECT_FALSE(isGrabbed(key::p));
    tabTo("check box", "Keep PiP on top of other windows");
    keyboard.stroke({key::space});
    awaitSaved(R"("pipAlwaysOnTop": false)");
    tabTo("combo box", "Default position");
    keyboard.stroke({down});
    awaitSaved(R"("pipCorner": "bottomLeft")");
    tabTo("radio button", "Check Specific Windows");
    keyboard.stroke({up});
    awaitSaved(R"("monitoringScope": "allWindows")");
    keyboard.stroke({down});
    awaitSaved(R"("monitoringScope": "specificApps")");

    tabTo("text", "Search installed apps");
    keyboard.stroke({g});
    require("only Gamma is listed",
            [this] { return !seek("list item", "Beta") && seek("list item", "Gamma"); });
    keyboard.stroke({key::escape});
    find("list item", "Beta");
    tabTo("list item", "Alpha");
    keyboard.stroke({down});
    keyboard.stroke({key::space});
    awaitSaved("org.example.Beta");
}

TEST_F(SettingsTest, HaveANameForWhateverTakesTheFocus) {
    openSettings();
    for (const std::string page : {"General", "PiP"}) {
        choosePage(page);
        int controls = 0;
        for (const Element& element : elements()) {
            if (!element.focusable)
                continue;
            ++controls;
            EXPECT_FALSE(element.name.empty() && element.label.empty()) << page << ": a " << element.role;
            EXPECT_FALSE(element.role == "combo box" && element.label.empty())
                << page << ": " << element.name;
        }
        EXPECT_GE(controls, 6) << page;
    }
    EXPECT_EQ(find("push button", "Show/hide PiP shortcut").description, "Super+Alt+P");
}

TEST_F(SettingsTest, HaveOneWindowOfOneSizeThatKeepsWhatItShows) {
    openSettings();
    const xcb_window_t window = awaitWindow();
    constexpr int titleBar = 24; // The title bar may move the window down by this many pixels.
    const auto hasSize = [&] { return facts.box(window).width == 460 && facts.box(window).height == 560; };
    EXPECT_TRUE(hasSize());
    const XServer::Options screen;
    EXPECT_NEAR(facts.box(window).x + 460 / 2, screen.width / 2, titleBar);
    EXPECT_NEAR(facts.box(window).y + 560 / 2, screen.height / 2, titleBar);
    commands.addState(window, "_NET_WM_STATE_MAXIMIZED_VERT");
    const std::uint32_t larger[] = {700, 700};
    xcb_configure_window(client.xcb(), window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, larger);
    client.sync();
    EXPECT_TRUE(holdsFor(hasSize, std::chrono::milliseconds(200)));

    choosePage("PiP");
    click("text", "Search installed apps");
    require("the field has the focus", [this] { return find("text", "Search installed apps").focused; });
    keyboard.stroke({m});
    const auto shows = [this](const char* text) {
        return [this, text] { return find("text", "Search installed apps").text == text; };
    };
    require("the letter is typed", shows("m"));
    commands.close(window);
    require("the window is closed", [this] { return !titled("Mirrolet Settings"); });
    EXPECT_TRUE(program->child().running());
    EXPECT_EQ(startOnceMore(), 0);
    awaitWindow();
    require("the letter is there again", shows("m"));
    EXPECT_FALSE(seek("list item", "Beta"));

    const auto cover = showWindow({.place = {60, 80, 900, 700}});
    // The program may have made a new window when it showed its settings again.
    commands.minimize(titled("Mirrolet Settings").value_or(window));
    require("the window is minimized", [this] { return !titled("Mirrolet Settings"); });
    EXPECT_EQ(startOnceMore(), 0);
    EXPECT_TRUE(facts.isAbove(awaitWindow(), cover->window()));
    EXPECT_EQ(program->windows(facts).size(), 1U);
}

TEST_F(SettingsTest, AreSavedAndTheProgramEndsWhileAFolderOfApplicationsDoesNotAnswer) {
    for (int number = 0; number < 2000; ++number) // Reading so many files takes a while.
        home->write("data/applications/many" + std::to_string(number) + ".desktop", "[Desktop Entry]\n");
    openSettings();
    std::unique_ptr<FrozenThread> scan;
    require("the applications are being read", [&] {
        // The program reads the applications again each time the "PiP" page is shown.
        click("page tab", "General");
        click("page tab", "PiP");
        return waitUntil(
            [&] { return (scan = FrozenThread::find(program->pid(), "stalledAppsScan")) != nullptr; },
            std::chrono::seconds(1));
    });
    click("check box", "Keep PiP on top of other windows");
    require("the click has arrived",
            [&] { return !find("check box", "Keep PiP on top of other windows").checked; });
    program->child().signal(SIGTERM);
    require("the program ends", [&] { return scan->hasEnded(); });
    EXPECT_EQ(program->child().waitForExit(), 0);
    awaitSaved(R"("pipAlwaysOnTop": false)");
}

TEST_F(SettingsTest, KeepTheOpenMirrorOnTopOrAmongTheOtherWindows) {
    openSettings();
    const auto call = showWindow({.place = {860, 300, 300, 300}});
    pressFrontmostShortcut();
    require("the mirror is shown", [this] { return mirror().has_value(); });

    // The window is in the same corner of the screen as the mirror, and below the mirror.
    const auto cover = showWindow({.wmClass = "Mail", .place = {890, 400, 380, 380}});
    commands.activate(cover->window());
    EXPECT_TRUE(facts.isAbove(*mirror(), cover->window()));
    choosePage("PiP");
    click("check box", "Keep PiP on top of other windows");
    awaitSaved(R"("pipAlwaysOnTop": false)");
    require("the mirror is an ordinary window, and in front", [&] {
        return mirror() && testing::Value(facts.clientList(), testing::Contains(*mirror())) &&
               facts.isAbove(*mirror(), cover->window());
    });
    giveFocusTo(*cover);
    require("the mirror goes under", [&] { return mirror() && facts.isAbove(cover->window(), *mirror()); });
    click("check box", "Keep PiP on top of other windows");
    require("the mirror comes back", [&] { return mirror() && facts.isAbove(*mirror(), cover->window()); });
}

TEST_F(SettingsTest, OfTheLoginItemAreTheFile) {
    openSettings();
    const auto clickTo = [this](bool isOn) {
        click("check box", "Launch at login");
        require("the switch follows", [&] { return find("check box", "Launch at login").checked == isOn; });
    };
    clickTo(true);
    EXPECT_THAT(Sandbox::read(autostartFile()), HasSubstr("Exec="));
    clickTo(false);
    EXPECT_TRUE(!std::filesystem::exists(autostartFile()) ||
                Sandbox::read(autostartFile()).find("Hidden=true") != std::string::npos);
    clickTo(true);

    // At the next start the switch shows what the file says.
    for (const bool isOn : {true, false}) {
        if (!isOn)
            home->write("config/autostart/app.mirrolet.Mirrolet.desktop",
                        Sandbox::read(autostartFile()) + "\nHidden=true\n");
        program->child().signal(SIGTERM);
        ASSERT_EQ(program->child().waitForExit(), 0);
        openSettings();
        EXPECT_EQ(find("check box", "Launch at login").checked, isOn);
    }
}

TEST_F(SettingsTest, SayWhyTheLoginItemCannotBeHad) {
    home->write("config/autostart", "A file where the folder would be.");
    openSettings();
    for (const char* answer : {"OK", "Escape"}) {
        click("check box", "Launch at login");
        const xcb_window_t alert = awaitWindow("Launch at Login");
        find("label", "Launch at Login");
        EXPECT_THAT(find("dialog", "Launch at Login").description, HasSubstr(autostartFile().string()));
        const Element button = find("push button", "OK");
        if (std::string(answer) == "OK")
            click(button);
        else
            keyboard.stroke({key::escape});
        require("the alert is gone", [&] { return !facts.viewable(alert); });
        EXPECT_FALSE(find("check box", "Launch at login").checked);
    }
}

} // namespace
} // namespace mirrolet
