#include "tests/desktop/endtoend/SettingsSteps.h"
#include "tests/desktop/harness/FrozenThread.h"
#include "tests/desktop/harness/StatusHost.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <sys/resource.h>

namespace mirrolet {
namespace {

using namespace harness;
using testing::HasSubstr;

constexpr auto monitoring = R"("pollInterval": 0.1)";

class SettingsTest : public SettingsSteps {
  protected:
    /// Shows a window of another application, in front of the settings window.
    std::unique_ptr<CallWindow> showWindowOf(const std::string& application, std::uint32_t colour) {
        return showWindow(
            {.wmClass = application, .place = {60, 80, 400, 400}, .colour = colourName(colour)});
    }

    /// Returns the mirror panel, which may be another window after the always-on-top setting has changed.
    std::optional<xcb_window_t> mirror() {
        for (const xcb_window_t window : program->windows(facts))
            if (window != titled("Mirrolet Settings") && facts.box(window).width < Program::promptWidth)
                return window;
        return std::nullopt;
    }

    [[nodiscard]] Picture pictureOf(const Element& element) const { return facts.screenshot(element.box); }

    /// Clicks the recorder and waits until it shows and says that it records.
    void startRecording(const std::string& name) {
        const Element recorder = find("push button", name);
        const Picture before = pictureOf(recorder);
        click(recorder);
        require("the recorder records", [&] {
            return pictureOf(recorder) != before &&
                   find("push button", name).description == "Press shortcut…";
        });
    }

    void record(const std::string& name, const std::vector<int>& keys, const std::string& spoken) {
        startRecording(name);
        keyboard.stroke(keys);
        require(name + " is " + spoken, [&] { return find("push button", name).description == spoken; });
    }
};

struct Change {
    const char* page;
    const char* role;
    const char* name;
    const char* choice; ///< The entry of the list that opens, or nullptr for a control that is only clicked.
    const char* saved;
};

const std::vector<Change>& changes() {
    static const std::vector<Change> rows = {
        {"General", "check box", "Start monitoring when app launches", "",
         R"("startMonitoringOnLaunch": true)"},
        {"General", "combo box", "Check for windows every", "5 seconds", R"("pollInterval": 5)"},
        {"General", "combo box", "Prompt disappears after", "30 seconds", R"("promptTimeout": 30)"},
        {"PiP", "check box", "Keep PiP on top of other windows", "", R"("pipAlwaysOnTop": false)"},
        {"PiP", "combo box", "Default position", "Top Left", R"("pipCorner": "topLeft")"},
        {"PiP", "radio button", "Check All Windows", "", R"("monitoringScope": "allWindows")"},
        {"PiP", "radio button", "Check Specific Windows", "", R"("monitoringScope": "specificApps")"},
    };
    return rows;
}

TEST_F(SettingsTest, AreChangedWithThePointer) {
    openSettings();
    for (const Change& row : changes()) {
        SCOPED_TRACE(row.name);
        choosePage(row.page);
        click(row.role, row.name);
        if (*row.choice != '\0')
            click("list item", row.choice);
        awaitSaved(row.saved);
    }
    for (const char* saved : {"\"net.whatsapp.WhatsApp\",", "\"org.example.Beta\""}) {
        click("list item", "Beta");
        awaitSaved(saved);
    }
    click("list item", "Beta");
    require("unticked again",
            [this] { return Sandbox::read(program->defaultsFile()).find("Beta") == std::string::npos; });
}

/// Operates the settings with keys alone, starting at the tab bar.
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
    keyboard.stroke({up}); // Changes the choice without opening the list.
    awaitSaved(R"("promptTimeout": 10)");

    tabTo("page tab list", "General");
    keyboard.stroke({right});
    tabTo("push button", "Show/hide PiP shortcut");
    keyboard.stroke({key::space});
    keyboard.stroke({key::leftControl, k});
    awaitSaved(R"("shortcutKeyCode": 40)");
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
    constexpr int titleBar = 24; // The window manager may move the window by so much.
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
    commands.minimize(titled("Mirrolet Settings").value_or(window)); // Closing may have replaced the window.
    require("the window is minimized", [this] { return !titled("Mirrolet Settings"); });
    EXPECT_EQ(startOnceMore(), 0);
    EXPECT_TRUE(facts.isAbove(awaitWindow(), cover->window()));
    EXPECT_EQ(program->windows(facts).size(), 1U);
}

TEST_F(SettingsTest, OpenFromTheMenu) {
    const StatusHost host(bus);
    host.setPresent(true);
    startQuiet();
    require("the status icon", [&] { return host.icons() == 1; });
    host.click();
    require("the menu, with the keyboard",
            [this] { return !program->windows(facts).empty() && keyboard.isTaken(); });
    for (int entry = 0; entry < 3; ++entry) // "Settings…" is the third.
        keyboard.stroke({down});
    keyboard.stroke({key::returnKey});
    awaitWindow();
}

TEST_F(SettingsTest, AlsoOfShortcutsTakeEffectAtOnce) {
    openSettings();
    choosePage("PiP");
    record("Show/hide PiP shortcut", {key::leftControl, key::leftShift, k}, "Ctrl+Shift+K");
    awaitSaved(R"("shortcutKeyCode": 40)");
    awaitSaved(R"("shortcutModifiers": 4608)");
    EXPECT_TRUE(isGrabbed(k, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT));
    EXPECT_FALSE(isGrabbed(key::p));
    // The program's own shortcuts come to the recorder and have no other effect.
    record("Show/hide PiP shortcut", {key::leftSuper, key::leftAlt, key::f}, "Super+Alt+F");
    record("Show/hide PiP shortcut", {key::leftSuper, key::leftAlt, key::p}, "Super+Alt+P");
    record("Start/close PiP shortcut", {key::leftShift, f5}, "Shift+F5");
    EXPECT_FALSE(isGrabbed(key::f));
    EXPECT_EQ(program->windows(facts).size(), 1U);

    const auto call = showWindowOf("Mail", blue);
    keyboard.stroke({key::leftShift, f5});
    require("the mirror is shown", [this] { return program->windows(facts).size() == 2; });
    pressVisibilityShortcut();
    require("the mirror is hidden", [this] { return program->windows(facts).size() == 1; });
}

TEST_F(SettingsTest, KeepAShortcutUntilAnotherIsRecorded) {
    openSettings();
    choosePage("PiP");
    const Picture before = pictureOf(find("push button", "Show/hide PiP shortcut"));
    const auto shown = [&] { return pictureOf(find("push button", "Show/hide PiP shortcut")); };

    startRecording("Show/hide PiP shortcut");
    const Picture recording = shown();
    keyboard.stroke({k});
    EXPECT_TRUE(holdsFor([&] { return shown() == recording; }, std::chrono::milliseconds(300)));
    keyboard.stroke({key::escape});
    require("Escape ends recording", [&] { return shown() == before; });

    for (const auto& [role, name] :
         {std::pair("page tab", "PiP"), std::pair("label", "Show/hide PiP shortcut")}) {
        startRecording("Show/hide PiP shortcut");
        click(role, name);
        require("a click elsewhere ends recording",
                [&] { return shown() == before && isGrabbed(key::p) && isGrabbed(key::f); });
    }

    startRecording("Show/hide PiP shortcut");
    startRecording("Start/close PiP shortcut");
    require("the other recorder ends the first", [&] { return shown() == before; });
    click("push button", "Start/close PiP shortcut");
    EXPECT_EQ(find("push button", "Start/close PiP shortcut").description, "Super+Alt+F");

    startRecording("Show/hide PiP shortcut");
    const auto other = showWindowOf("Mail", blue); // The new window takes the focus.
    require("both shortcuts work again", [this] { return isGrabbed(key::p) && isGrabbed(key::f); });
    EXPECT_TRUE(titled("Mirrolet Settings"));
}

/// Limits the length of files instead of filling a disk, because a full disk needs root. Writing ends in the
/// middle of the file.
TEST_F(SettingsTest, LiveOnInMemoryUntilTheDiskHasRoomAgain) {
    std::signal(SIGXFSZ, SIG_IGN); // The program inherits this. Otherwise the signal would end it.
    const std::string others = R"("others": ")" + std::string(2000, 'x') + '"';
    openSettings(R"("startMonitoringOnLaunch": false, )" + others);
    const std::string before = Sandbox::read(program->defaultsFile());
    const auto setRoom = [this](rlim_t bytes) {
        const rlimit limit{bytes, RLIM_INFINITY};
        ASSERT_EQ(prlimit(program->pid(), RLIMIT_FSIZE, &limit, nullptr), 0) << std::strerror(errno);
    };
    setRoom(1024); // Enough for the log.
    click("check box", "Start monitoring when app launches");
    require("it says so", [this] { return !program->log().empty(); });
    const std::string said = program->log();
    EXPECT_THAT(said, HasSubstr("cannot write"));
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    click("combo box", "Check for windows every");
    click("list item", "5 seconds");
    EXPECT_TRUE(holdsFor([&] { return Sandbox::read(program->defaultsFile()) == before; },
                         std::chrono::milliseconds(600)));
    const std::filesystem::directory_iterator files(program->defaultsFile().parent_path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1) << "what was begun is taken away";

    setRoom(RLIM_INFINITY);
    click("combo box", "Prompt disappears after");
    click("list item", "30 seconds");
    for (const std::string& saved :
         {std::string(R"("startMonitoringOnLaunch": true)"), std::string(R"("pollInterval": 5)"),
          std::string(R"("promptTimeout": 30)"), others})
        awaitSaved(saved);
    EXPECT_EQ(program->log(), said);
}

TEST_F(SettingsTest, AreSavedAndTheProgramEndsWhileAFolderOfApplicationsDoesNotAnswer) {
    for (int number = 0; number < 2000; ++number) // Reading so many takes a while.
        home->write("data/applications/many" + std::to_string(number) + ".desktop", "[Desktop Entry]\n");
    openSettings();
    std::unique_ptr<FrozenThread> scan;
    require("the applications are being read", [&] {
        click("page tab", "General"); // Showing the other page reads the applications anew.
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

TEST_F(SettingsTest, OfMonitoringTakeEffectInTheRunningProgram) {
    openSettings(R"("pollInterval": 600)");
    const auto call = std::make_unique<CallWindow>(
        server, CallWindow::Options{.wmClass = "Alpha", .place = {860, 300, 300, 300}});
    EXPECT_TRUE(holdsFor([this] { return !program->prompt(facts); }, std::chrono::milliseconds(400)));
    choosePage("PiP");
    click("list item", "Alpha");
    awaitSaved("org.example.Alpha");
    choosePage("General");
    click("combo box", "Check for windows every");
    click("list item", "1 second");
    awaitPrompt();
    keyboard.stroke({key::returnKey});
    require("the mirror is shown", [this] { return mirror().has_value(); });

    // This window lies over the mirror's corner of the screen, and beside the settings.
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

TEST_F(SettingsTest, OfWhatIsWatchedTakeEffectInTheRunningProgram) {
    openSettings(monitoring);
    choosePage("PiP");
    const auto other = showWindowOf("Mail", green);
    EXPECT_TRUE(holdsFor([this] { return !program->prompt(facts); }, std::chrono::milliseconds(400)));
    EXPECT_EQ(startOnceMore(), 0); // Brings the settings window to the front.
    awaitWindow();
    click("radio button", "Check All Windows");
    giveFocusTo(*other);
    awaitPrompt();
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

    // The next start shows the state of the file.
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
