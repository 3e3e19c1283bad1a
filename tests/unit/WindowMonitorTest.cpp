#include "monitor/WindowMonitor.h"

#include "DesktopTest.h"
#include "platform/coregraphics/DisplayScale.h"
#include "settings/SettingsStore.h"

#include <string>
#include <unistd.h>
#include <vector>

namespace mirrolet {
namespace {

using platform::desktop::WindowRow;
using testing::ElementsAre;

constexpr std::int32_t messenger = 100;
constexpr std::int32_t editor = 200;
constexpr std::int32_t browser = 300;

WindowRow row(std::uint32_t number, int width, int height, std::int32_t pid, const char* owner,
              const char* title = "") {
    return {number, {10, 20, width, height}, 0, pid, owner, title};
}

class WindowMonitorTestOfSearches : public DesktopTest {
  protected:
    WindowMonitorTestOfSearches() {
        desktop.applications().add({messenger, "WhatsApp", "net.whatsapp.WhatsApp"});
        desktop.applications().add({editor, "Editor", "org.editor"});
        desktop.applications().add({browser, "Browser", "org.browser"});
    }
};

TEST_F(WindowMonitorTestOfSearches, ASnapshotLeavesOutWhatCannotBeOffered) {
    auto layered = row(3, 500, 500, editor, "Editor");
    layered.layer = 1;
    auto underneath = row(8, 500, 500, editor, "Editor");
    underneath.layer = -1;
    auto untitled = row(5, 500, 500, 999, "Nobody");
    untitled.title = std::nullopt;
    desktop.windowList().setWindows(
        {{row(1, 100, 100, editor, "Editor", "exactly large enough"), row(2, 500, 500, getpid(), "Mirrolet"),
          layered, underneath, row(4, 99, 500, editor, "Editor"), untitled, row(6, 500, 99, 999, "Nobody"),
          row(7, 500, 200, 999, "Nobody")}});
    const auto windows = WindowMonitor::currentWindows();
    ASSERT_EQ(windows.size(), 3u);
    EXPECT_EQ(windows[0].windowID, 1u);
    EXPECT_EQ(windows[0].bounds, (platform::CGRect{{10, 20}, {100, 100}}));
    EXPECT_EQ(windows[0].bundleIdentifier, "org.editor");
    EXPECT_EQ(windows[1].windowID, 5u);
    EXPECT_EQ(windows[1].windowName, "");
    EXPECT_EQ(windows[1].bundleIdentifier, std::nullopt);
    EXPECT_EQ(windows[2].windowID, 7u);
    EXPECT_EQ(desktop.applications().lookUps(999), 1) << "one look-up for a process, an absent one too";
    EXPECT_EQ(desktop.applications().lookUps(getpid()), 0);

    desktop.windowList().setWindows(std::nullopt);
    EXPECT_TRUE(WindowMonitor::currentWindows().empty());
}

TEST_F(WindowMonitorTestOfSearches, BoundsAndTheSmallestSizeAreInPoints) {
    platform::DisplayScale::setCurrent(2);
    desktop.windowList().setWindows(
        {{row(1, 199, 400, editor, "Editor"), row(2, 200, 201, editor, "Editor")}});
    const auto windows = WindowMonitor::currentWindows();
    platform::DisplayScale::setCurrent(1);
    ASSERT_EQ(windows.size(), 1u);
    EXPECT_EQ(windows[0].bounds, (platform::CGRect{{5, 10}, {100, 100.5}}));
}

struct SearchRow {
    const char* what;
    std::vector<WindowRow> windows;
    std::set<std::string> selected;
    std::optional<std::int32_t> frontmost;
    std::uint32_t expected; ///< The number of the window that is found, or 0 for none.
    bool isLikelyCall;
};

TEST_F(WindowMonitorTestOfSearches, AmongChosenApplicationsTheCallComesFirst) {
    const auto chats = row(1, 1000, 800, messenger, "WhatsApp", "WhatsApp");
    const auto text = row(2, 1200, 900, editor, "Editor", "video call.txt");
    const auto call = row(3, 300, 200, messenger, "WhatsApp Helper", "Ann – VIDEO Call");
    const auto small = row(4, 300, 200, messenger, "WhatsApp", "Ann");
    const auto sameSize = row(5, 200, 300, messenger, "WhatsApp", "Bob");
    const auto page = row(6, 1200, 900, browser, "Browser");
    const auto strip = row(8, 1600, 110, messenger, "WhatsApp", "A strip");
    const auto square = row(9, 500, 500, messenger, "WhatsApp", "A square");
    const std::string app = "net.whatsapp.WhatsApp";
    const SearchRow rows[] = {
        {"a title in any case, on the smaller window", {chats, text, call}, {app}, {}, 3, true},
        {"no title: the second-largest", {small, chats}, {app}, {}, 4, true},
        {"the second-largest by area", {strip, chats, square}, {app}, {}, 9, true},
        {"equal sizes keep their order", {sameSize, small}, {app}, {}, 4, true},
        {"only one window", {text, chats}, {app}, {}, 1, false},
        {"only one window, but a call", {call}, {app, "org.editor"}, {}, 3, true},
        {"the messenger goes before others", {text, chats}, {app, "org.editor"}, editor, 1, false},
        {"not running", {text, page}, {app}, {}, 0, false},
        {"under another name", {row(7, 500, 500, messenger, "Messenger")}, {app}, {}, 0, false},
        {"not running, another chosen", {text, page}, {app, "org.browser"}, {}, 6, false},
        {"not chosen", {chats, call, page}, {"org.browser"}, {}, 6, false},
        {"the frontmost of two", {text, page}, {"org.browser", "org.editor"}, browser, 6, false},
        {"equally large: nearer to the front", {text, page}, {"org.browser", "org.editor"}, {}, 2, false},
        {"the frontmost owns none of them", {text, page}, {"org.editor"}, browser, 2, false},
        {"unknown application", {row(7, 500, 500, 999, "Nobody")}, {""}, {}, 0, false},
    };
    for (const auto& search : rows) {
        SCOPED_TRACE(search.what);
        desktop.windowList().setWindows(search.windows);
        desktop.applications().setFrontmost(search.frontmost);
        const auto found = WindowMonitor::candidateForSpecificApps(search.selected);
        EXPECT_EQ(found ? found->windowID : 0, search.expected);
        EXPECT_EQ(found && found->isLikelyCall, search.isLikelyCall);
    }
}

TEST_F(WindowMonitorTestOfSearches, EveryKeywordOfACallIsFoundInUnicodeTitles) {
    for (const auto* title : {"Video call", "ÄÖ voice CALL", "group call (3)", "Call with Ünal"}) {
        desktop.windowList().setWindows({{row(1, 900, 900, messenger, "WhatsApp", "chats"),
                                          row(2, 800, 800, messenger, "WhatsApp", "profile"),
                                          row(3, 200, 200, messenger, "WhatsApp", title)}});
        const auto found = WindowMonitor::candidateForSpecificApps({"net.whatsapp.WhatsApp"});
        ASSERT_TRUE(found);
        EXPECT_EQ(found->windowID, 3u) << title;
    }
}

TEST_F(WindowMonitorTestOfSearches, AmongAllWindowsTheDesktopsOwnPartsAreLeftOut) {
    std::vector<WindowRow> parts;
    for (const auto* owner :
         {"Window Server", "Dock", "Control Center", "NotificationCenter", "Spotlight", "loginwindow",
          "SystemUIServer", "CoreServicesUIAgent", "WallpaperAgent", "screencaptureui", "TextInputMenuAgent",
          "AXVisualSupportAgent", "ScreenSaverEngine"})
        parts.push_back(row(10 + static_cast<std::uint32_t>(parts.size()), 2000, 2000, 5, owner));
    const auto& dock = parts.at(1);
    const auto call = row(3, 300, 200, messenger, "WhatsApp", "video call");
    const auto text = row(4, 500, 500, editor, "Editor");
    const auto strip = row(5, 1600, 110, editor, "Editor");
    const auto chats = row(6, 200, 300, messenger, "WhatsApp");
    const auto page = row(7, 400, 300, messenger, "WhatsApp");
    const SearchRow rows[] = {
        {"only the desktop", parts, {}, {}, 0, false},
        {"the largest, and never as a call", {dock, call, text}, {}, {}, 4, false},
        {"the frontmost", {dock, call, text}, {}, messenger, 3, false},
        {"the frontmost has no window", {call, text}, {}, browser, 4, false},
        {"the largest by area", {strip, text}, {}, {}, 4, false},
        {"the largest of the frontmost", {text, chats, page, call}, {}, messenger, 7, false},
        {"the nearest of equals of the frontmost", {text, chats, call}, {}, messenger, 6, false},
    };
    for (const auto& search : rows) {
        SCOPED_TRACE(search.what);
        desktop.windowList().setWindows(search.windows);
        desktop.applications().setFrontmost(search.frontmost);
        const auto found = WindowMonitor::candidateForAllWindows();
        EXPECT_EQ(found ? found->windowID : 0, search.expected);
        EXPECT_FALSE(found && found->isLikelyCall);
    }
}

TEST_F(WindowMonitorTestOfSearches, ASearchReadsTheListOnceAndWithoutASelectionNever) {
    WindowMonitor::candidateForSpecificApps({});
    EXPECT_EQ(desktop.windowList().reads(), 0);
    WindowMonitor::candidateForSpecificApps({"net.whatsapp.WhatsApp", "org.editor"});
    EXPECT_EQ(desktop.windowList().reads(), 1);
    WindowMonitor::candidateForAllWindows();
    EXPECT_EQ(desktop.windowList().reads(), 2);
}

class WindowMonitorTest : public DesktopTest {
  protected:
    WindowMonitorTest() {
        monitor->onCallDetected = [this](const DetectedWindowInfo& window) {
            EXPECT_EQ(time.runningQueue(), "main");
            events.push_back("detected " + std::to_string(window.windowID));
        };
        monitor->onCallEnded = [this] {
            EXPECT_EQ(time.runningQueue(), "main");
            events.emplace_back("ended");
        };
        atEnd.emplace_back([this] {
            if (monitor)
                monitor->stop();
            monitor = nullptr;
        });
    }

    void showCall(std::uint32_t number) {
        desktop.windowList().setWindows({{row(number, 300, 300, messenger, "WhatsApp", "Video call")}});
    }
    void showNothing() { desktop.windowList().setWindows(std::vector<WindowRow>()); }

    std::shared_ptr<WindowMonitor> monitor = WindowMonitor::make();
    std::vector<std::string> events;
};

TEST_F(WindowMonitorTest, ReportsACallOnceAndItsEndOnce) {
    showCall(1);
    monitor->start();
    monitor->start();
    EXPECT_TRUE(monitor->isMonitoring());
    time.run();
    EXPECT_THAT(events, ElementsAre("detected 1")) << "by the first poll, which is at once";
    EXPECT_EQ(desktop.windowList().reads(), 1) << "the second start made no second timer";
    time.advance(2);
    showCall(2);
    time.advance(2);
    EXPECT_THAT(events, ElementsAre("detected 1")) << "another window is no new call";
    desktop.windowList().setWindows(std::nullopt);
    time.advance(4);
    EXPECT_THAT(events, ElementsAre("detected 1", "ended"));
    showCall(2);
    time.advance(2);
    EXPECT_THAT(events, ElementsAre("detected 1", "ended", "detected 2"));
}

TEST_F(WindowMonitorTest, StoppingEndsACallOnceAndThePolls) {
    showCall(1);
    monitor->start();
    time.run();
    monitor->stop();
    monitor->stop();
    EXPECT_FALSE(monitor->isMonitoring());
    EXPECT_THAT(events, ElementsAre("detected 1")) << "the end comes on a later turn";
    time.advance(10);
    EXPECT_THAT(events, ElementsAre("detected 1", "ended"));
    EXPECT_EQ(desktop.windowList().reads(), 1);
    monitor->start();
    time.run();
    EXPECT_THAT(events, ElementsAre("detected 1", "ended", "detected 1")) << "the call still goes on";
}

TEST_F(WindowMonitorTest, ARestartTakesTheNewIntervalAndLeavesTheCallAlone) {
    monitor->restartIfMonitoring();
    EXPECT_FALSE(monitor->isMonitoring());
    showCall(1);
    monitor->start();
    time.advance(1);
    SettingsStore::shared().setPollInterval(10);
    monitor->restartIfMonitoring();
    time.run();
    EXPECT_EQ(desktop.windowList().reads(), 2);
    time.advance(9.9);
    EXPECT_EQ(desktop.windowList().reads(), 2);
    showNothing();
    time.advance(0.2);
    EXPECT_THAT(events, ElementsAre("detected 1", "ended"));
}

TEST_F(WindowMonitorTest, EachPollReadsTheSettingsAnew) {
    desktop.windowList().setWindows({{row(4, 500, 500, editor, "Editor")}});
    monitor->start();
    time.run();
    EXPECT_TRUE(events.empty());
    SettingsStore::shared().setMonitoringScope(MonitoringScope::allWindows);
    time.advance(2);
    EXPECT_THAT(events, ElementsAre("detected 4"));
}

TEST_F(WindowMonitorTest, CallbacksAreThoseOfTheMomentOfThePoll) {
    auto noted = std::move(monitor->onCallEnded);
    monitor->onCallEnded = nullptr;
    showCall(1);
    monitor->start();
    time.run();
    monitor->stop();
    monitor->onCallEnded = std::move(noted);
    time.run();
    EXPECT_THAT(events, ElementsAre("detected 1"));
}

TEST_F(WindowMonitorTest, AMonitorThatIsGonePollsNoMore) {
    monitor->start();
    time.run();
    monitor = nullptr;
    time.advance(10);
    EXPECT_EQ(desktop.windowList().reads(), 1);
}

} // namespace
} // namespace mirrolet
