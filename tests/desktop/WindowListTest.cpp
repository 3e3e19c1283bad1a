#include "platform/desktop/x11/windows/X11WindowList.h"
#include "tests/desktop/harness/CallWindow.h"
#include "tests/desktop/harness/WindowCommands.h"
#include "tests/desktop/harness/WindowFacts.h"
#include "tests/desktop/harness/WindowManager.h"
#include "tests/desktop/harness/XServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace mirrolet::platform::desktop::x11 {
namespace {

using namespace mirrolet::harness;
using testing::IsEmpty;
using testing::Optional;

/// Tests the window list on an X server to which the test adds clients and windows.
class WindowListTest : public testing::Test {
  protected:
    WindowListTest() {
        std::string problem;
        connection = X11Connection::open(server.display(), problem);
        sandbox.write("data/applications/net.whatsapp.WhatsApp.desktop",
                      "[Desktop Entry]\nType=Application\nName=Chats\nExec=chats\nStartupWMClass=WhatsApp\n");
        sandbox.write("data/applications/notes.desktop", "[Desktop Entry]\nType=Application\nName=Web notes\n"
                                                         "Exec=browser --app-id=n\nStartupWMClass=crx_n\n");
        applications = std::make_unique<X11Applications>(
            *connection, previousFocus, DesktopEntryIndex({(sandbox.dataHome() / "applications").string()}));
        list = std::make_unique<X11WindowList>(*connection, *applications,
                                               [this](xcb_window_t window) { return isMirrored(window); });
    }

    std::vector<WindowRow> rows() { return list->onScreenWindows().value(); }
    std::vector<WindowNumber> windows() {
        std::vector<WindowNumber> result;
        for (const auto& row : rows())
            result.push_back(row.number);
        return result;
    }
    WindowRow rowOf(xcb_window_t window) {
        for (auto& row : rows()) {
            if (row.number == window)
                return row;
        }
        return {};
    }
    bool becomes(const std::vector<WindowNumber>& expected) {
        return waitUntil([&] { return windows() == expected; });
    }
    void write(xcb_window_t window, const std::string& property, const std::string& type, std::uint8_t format,
               const std::string& bytes) {
        xcb_change_property(client.xcb(), XCB_PROP_MODE_REPLACE, window, client.atom(property),
                            client.atom(type), format,
                            static_cast<std::uint32_t>(bytes.size() / (format / 8U)), bytes.data());
        client.sync();
    }
    void write(xcb_window_t window, const std::string& property, const std::string& type,
               const std::vector<std::uint32_t>& values) {
        write(window, property, type, 32, {reinterpret_cast<const char*>(values.data()), values.size() * 4});
    }
    /// Sets the properties that a window manager sets on the root window. `check` is the window manager's own
    /// window.
    void pretendManager(xcb_window_t check, const std::vector<std::uint32_t>& stack) {
        write(client.root(), "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
        write(client.root(), "_NET_CLIENT_LIST_STACKING", "WINDOW", stack);
    }
    std::int32_t frontmost() {
        const auto application = applications->frontmost();
        return application ? application->pid : 0;
    }
    xcb_window_t makeWindow(bool mapped, std::uint32_t overrideRedirect = 0, xcb_window_t parent = 0) {
        const auto window = xcb_generate_id(client.xcb());
        xcb_create_window(client.xcb(), XCB_COPY_FROM_PARENT, window, parent ? parent : client.root(), 0, 0,
                          200, 100, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
        if (mapped)
            xcb_map_window(client.xcb(), window);
        return window;
    }

    const XServer server;
    XClient client{server};
    Sandbox sandbox;
    std::unique_ptr<X11Connection> connection;
    PreviousFocus previousFocus;
    std::unique_ptr<X11Applications> applications;
    std::unique_ptr<X11WindowList> list;
    X11WindowList::IsMirrored isMirrored = [](xcb_window_t) { return false; };
};

TEST_F(WindowListTest, GivesManagedWindowsFrontToBackWithTheirOwners) {
    const WindowManager manager(server, WindowManagerKind::openbox);
    WindowCommands commands(client);
    const CallWindow call(server);
    const CallWindow other(server, {.title = "Notes", .wmClass = "Browser", .wmInstance = "crx_n"});
    const CallWindow dock(server, {.title = "Dock", .type = "_NET_WM_WINDOW_TYPE_DOCK"});
    const CallWindow desktop(server, {.title = "Desktop", .type = "_NET_WM_WINDOW_TYPE_DESKTOP"});
    commands.activate(call.window());
    EXPECT_TRUE(becomes({call.window(), other.window()}));
    commands.activate(other.window());
    EXPECT_TRUE(becomes({other.window(), call.window()}));

    write(call.window(), "_NET_WM_PID", "CARDINAL", {2});
    const auto row = rowOf(call.window());
    EXPECT_EQ(row.ownerPid, call.pid());
    EXPECT_EQ(row.ownerName, "Chats");
    EXPECT_EQ(row.title, "Video call");
    EXPECT_EQ(row.layer, 0);
    const auto box = WindowFacts(client).box(call.window());
    EXPECT_EQ(row.bounds, (PixelRect{box.x, box.y, box.width, box.height}));
    EXPECT_EQ(applications->running(row.ownerPid)->identifier, "net.whatsapp.WhatsApp");
    EXPECT_EQ(rowOf(other.window()).ownerName, "Web notes");

    commands.addState(call.window(), "_NET_WM_STATE_ABOVE");
    EXPECT_TRUE(waitUntil([&] { return rowOf(call.window()).layer > 0; }));
    commands.minimize(call.window());
    EXPECT_TRUE(becomes({other.window()}));
}

TEST_F(WindowListTest, KnowsTheFrontmostApplicationAndTheOneBeforeAPanel) {
    const WindowManager manager(server, WindowManagerKind::openbox);
    const CallWindow call(server);
    const CallWindow other(server, {.title = "Notes", .wmClass = "Notes"});
    WindowCommands(client).activate(other.window());
    EXPECT_TRUE(waitUntil([&] { return frontmost() == other.pid(); }));
    previousFocus.begin(call.window(), 1);
    EXPECT_EQ(applications->frontmost()->identifier, "net.whatsapp.WhatsApp");
    previousFocus.begin(0x7FFFFFF, 1);
    EXPECT_EQ(frontmost(), 0) << "the window before the panel died";
    previousFocus.end(1);
    EXPECT_EQ(frontmost(), other.pid());
}

TEST_F(WindowListTest, KnowsTheFrontmostApplicationWithoutAManager) {
    EXPECT_EQ(frontmost(), 0);
    const CallWindow call(server);
    const auto child = makeWindow(true, 0, call.window());
    client.sync();
    xcb_set_input_focus(client.xcb(), XCB_INPUT_FOCUS_PARENT, child, XCB_CURRENT_TIME);
    client.sync();
    EXPECT_EQ(frontmost(), call.pid());
}

TEST_F(WindowListTest, ReadsTheServersStackWithoutAManagerAndAfterItsEnd) {
    const auto back = makeWindow(true), front = makeWindow(true);
    makeWindow(true, 1);
    makeWindow(false);
    client.sync();
    EXPECT_EQ(windows(), (std::vector<WindowNumber>{front, back}));
    pretendManager(0x7FFFFFF, {front});
    EXPECT_EQ(windows(), (std::vector<WindowNumber>{front, back})) << "the list of a manager that is gone";
}

TEST_F(WindowListTest, BearsEveryKindOfNonsense) {
    const auto check = makeWindow(false), one = makeWindow(true), two = makeWindow(true);
    write(check, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
    pretendManager(check, {one, 0, two, 0x7FFFFFF, one, two, check});
    EXPECT_EQ(windows(), (std::vector<WindowNumber>{two, one}));
    pretendManager(check, {});
    EXPECT_THAT(windows(), IsEmpty()) << "an empty desktop";

    pretendManager(check, {one});
    write(one, "WM_NAME", "STRING", 8, "Gr\xFC\xDF");
    EXPECT_EQ(rowOf(one).title, "Grüß");
    write(one, "_NET_WM_NAME", "UTF8_STRING", 8, std::string(8, '\xFF'));
    EXPECT_THAT(rowOf(one).title, Optional(testing::StartsWith("\uFFFD\uFFFD")));
    write(one, "_NET_WM_NAME", "UTF8_STRING", 8, "ä" + std::string(1 << 17, 'x'));
    EXPECT_EQ(rowOf(one).title->size(), 4096);
    for (const auto* property : {"_NET_WM_STATE", "_NET_WM_WINDOW_TYPE", "_GTK_FRAME_EXTENTS", "WM_CLASS"})
        write(one, property, "STRING", 8, "\x01\xFF\x02");
    write(one, "_GTK_FRAME_EXTENTS", "CARDINAL", {10, 10, 10, 10});
    EXPECT_EQ(rowOf(one).bounds, (PixelRect{10, 10, 180, 80}));
    write(client.root(), "_NET_CLIENT_LIST_STACKING", "CARDINAL", {one});
    EXPECT_EQ(windows().size(), 2) << "no list, so the server's stack";
}

/// Each row is a state of a window that was observed under a real window manager.
TEST_F(WindowListTest, CountsWhatIsMirroredOnAnotherWorkspaceOrMinimizedButLive) {
    const auto check = makeWindow(false);
    const std::vector<std::uint32_t> normal{1, 0}, iconic{3, 0}, hidden{client.atom("_NET_WM_STATE_HIDDEN")};
    struct Row {
        const char* what;
        bool mapped;
        std::uint32_t workspace;
        std::vector<std::uint32_t> wmState, states;
        bool listed, listedUnderKWin, listedIfMirrored;
    };
    const Row kinds[] = {
        {"unmapped on another workspace", false, 1, normal, {}, false, false, true},
        {"minimized, then left", false, 1, iconic, hidden, false, false, true},
        {"mapped on another workspace (mutter)", true, 1, iconic, {}, false, false, true},
        {"another monitor's workspace, or KWin's previews", true, 1, normal, {}, true, false, true},
        {"mapped while it is minimized (mutter)", true, 0, iconic, hidden, false, false, true},
        {"minimized", false, 0, iconic, hidden, false, false, false},
        {"unmapped on all workspaces", false, 0xFFFFFFFF, normal, {}, false, false, false},
        {"on all workspaces", true, 0xFFFFFFFF, normal, {}, true, true, true},
    };
    write(client.root(), "_NET_CURRENT_DESKTOP", "CARDINAL", {0});
    write(check, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
    for (const auto& row : kinds) {
        SCOPED_TRACE(row.what);
        const auto window = makeWindow(row.mapped);
        write(window, "_NET_WM_DESKTOP", "CARDINAL", {row.workspace});
        write(window, "WM_STATE", "WM_STATE", row.wmState);
        write(window, "_NET_WM_STATE", "ATOM", row.states);
        pretendManager(check, {window});
        isMirrored = [](xcb_window_t) { return false; };
        write(check, "_NET_WM_NAME", "UTF8_STRING", 8, "GNOME Shell");
        EXPECT_EQ(windows().size(), row.listed);
        write(check, "_NET_WM_NAME", "UTF8_STRING", 8, "KWin");
        EXPECT_EQ(windows().size(), row.listedUnderKWin);
        isMirrored = [window](xcb_window_t asked) { return asked == window; };
        EXPECT_EQ(windows().size(), row.listedIfMirrored);
    }
}

TEST_F(WindowListTest, LooksAgainForAMirroredWindowInTheMiddleOfAChangeOfWorkspace) {
    const auto check = makeWindow(false), call = makeWindow(false);
    write(check, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
    pretendManager(check, {call});
    write(call, "_NET_WM_DESKTOP", "CARDINAL", {0});
    write(client.root(), "_NET_CURRENT_DESKTOP", "CARDINAL", {0});
    int looks = 0;
    isMirrored = [&](xcb_window_t) {
        // The user leaves the workspace while the list is read. The window manager has already unmapped the
        // call's window.
        if (++looks == 2)
            write(client.root(), "_NET_CURRENT_DESKTOP", "CARDINAL", {1});
        return true;
    };
    EXPECT_EQ(windows(), std::vector<WindowNumber>{call});
}

TEST_F(WindowListTest, ReadsOnAmongThousandsOfWindowsThatDie) {
    const auto check = makeWindow(false);
    write(check, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {check});
    std::vector<xcb_window_t> stack;
    for (int i = 0; i < 2000; ++i)
        stack.push_back(makeWindow(true));
    pretendManager(check, stack);
    const auto listed = windows();
    EXPECT_EQ(listed.size(), 2000);
    EXPECT_EQ(listed.front(), stack.back());
    // Destroys three of four windows while the list is read again and again.
    std::size_t died = 0;
    while (died < 1500) {
        for (int i = 0; i < 50; ++i)
            xcb_destroy_window(client.xcb(), stack[stack.size() - ++died]);
        xcb_flush(client.xcb());
        EXPECT_TRUE(list->onScreenWindows());
    }
    client.sync();
    EXPECT_EQ(windows().size(), 500);
    EXPECT_EQ(rows().front().ownerPid, getpid());
}

} // namespace
} // namespace mirrolet::platform::desktop::x11
