#include "tests/desktop/harness/WindowManager.h"

#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/SessionBus.h"
#include "tests/desktop/harness/WindowCommands.h"
#include "tests/desktop/harness/WindowFacts.h"
#include "tests/desktop/harness/XServer.h"

#include <algorithm>
#include <csignal>

namespace mirrolet::harness {

namespace {

struct Kind {
    const char* program;
    const char* package;
    std::vector<std::string> arguments;
};

/// The settings with which i3 shows no bar, starts no programs and asks no questions on its first start.
constexpr auto i3Settings = "# i3 config file (v4)\n"
                            "font pango:DejaVu Sans 10\n"
                            "focus_follows_mouse no\n"
                            "default_border pixel 2\n";

/// The setting with which fluxbox raises a window 1 ms after it got the focus. By default that takes 250 ms,
/// and a mirror that was opened meanwhile would come to lie behind the window.
constexpr auto fluxboxSettings = "session.autoRaiseDelay: 1\n"
                                 "session.screen0.autoRaise: false\n";

Kind describe(WindowManagerKind kind, const Sandbox& sandbox) {
    switch (kind) {
    case WindowManagerKind::openbox:
        return {"openbox", "openbox", {"--config-file", "/etc/xdg/openbox/rc.xml"}};
    case WindowManagerKind::xfwm4:
        return {"xfwm4", "xfwm4", {"--compositor=on", "--vblank=off", "--sm-client-disable"}};
    case WindowManagerKind::i3:
        return {"i3", "i3-wm", {"-c", sandbox.write("i3.conf", i3Settings)}};
    case WindowManagerKind::fluxbox:
        return {"fluxbox",
                "fluxbox",
                {"-no-toolbar", "-no-slit", "-rc", sandbox.write("fluxbox.init", fluxboxSettings)}};
    case WindowManagerKind::icewm:
        return {"icewm", "icewm", {}};
    case WindowManagerKind::mutter:
        return {"mutter", "mutter", {"--x11", "--sm-disable"}};
    case WindowManagerKind::kwin:
        return {"kwin_x11", "kwin-x11", {}};
    case WindowManagerKind::marco:
        return {"marco", "marco", {"--composite", "--sm-disable"}};
    case WindowManagerKind::none:
        break;
    }
    return {};
}

/// Replaces fbsetbg, with which fluxbox sets its wallpaper, by a script that does nothing. If the real
/// fbsetbg fails, it shows a window with a message some seconds later.
void standInForWallpaperTool(const Sandbox& sandbox, Environment& environment) {
    const auto tool = sandbox.write("bin/fbsetbg", "#!/bin/sh\n");
    std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
    environment["PATH"] = tool.parent_path().string() + ":" + environment["PATH"];
}

/// Returns whether a window manager is running. A running window manager has a window of its own. A property
/// of the root window names this window, and the window has the same property. After the window manager has
/// died, the property of the root window still names the window, but the window no longer exists.
bool isManaged(const WindowFacts& facts, xcb_window_t root) {
    const auto window = facts.numbers(root, "_NET_SUPPORTING_WM_CHECK");
    return !window.empty() && facts.numbers(window.front(), "_NET_SUPPORTING_WM_CHECK") == window;
}

/// Returns whether there are windows that a starting window manager will manage, such as those of an earlier
/// window manager.
bool hasWindowsToAdopt(const WindowFacts& facts) {
    const auto windows = facts.children(facts.connection().root());
    return std::ranges::any_of(windows, [&](xcb_window_t window) {
        return facts.viewable(window) && !facts.overrideRedirect(window);
    });
}

/// Shows a window again and again until the window manager manages the window. openbox announces itself
/// before it listens for new windows, so it may miss the first windows.
class Probe {
  public:
    explicit Probe(XClient& client) : client(client), window(xcb_generate_id(client.xcb())) {
        xcb_create_window(client.xcb(), XCB_COPY_FROM_PARENT, window, client.root(), 0, 0, 10, 10, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    }
    ~Probe() {
        xcb_destroy_window(client.xcb(), window);
        client.sync();
    }
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;

    [[nodiscard]] bool isTakenCareOf() {
        xcb_map_window(client.xcb(), window);
        const WindowFacts facts(client);
        const bool taken = waitUntil([&] { return facts.viewable(window); }, std::chrono::milliseconds(200));
        if (!taken)
            xcb_unmap_window(client.xcb(), window);
        return taken;
    }

  private:
    XClient& client;
    xcb_window_t window;
};

} // namespace

std::string WindowManager::name(WindowManagerKind kind) {
    switch (kind) {
    case WindowManagerKind::openbox:
        return "openbox";
    case WindowManagerKind::xfwm4:
        return "xfwm4";
    case WindowManagerKind::i3:
        return "i3";
    case WindowManagerKind::fluxbox:
        return "fluxbox";
    case WindowManagerKind::icewm:
        return "icewm";
    case WindowManagerKind::mutter:
        return "mutter";
    case WindowManagerKind::kwin:
        return "kwin";
    case WindowManagerKind::marco:
        return "marco";
    case WindowManagerKind::none:
        break;
    }
    return "none";
}

WindowManager::WindowManager(const XServer& server, WindowManagerKind kind, const SessionBus* bus)
    : which(kind) {
    if (kind == WindowManagerKind::none)
        return;
    const Kind wanted = describe(kind, sandbox);
    requireProgram(wanted.program, wanted.package);
    Environment environment = server.with(sandbox.environment());
    if (bus != nullptr)
        environment = bus->with(environment);
    standInForWallpaperTool(sandbox, environment);
    std::vector<std::string> command{wanted.program};
    command.insert(command.end(), wanted.arguments.begin(), wanted.arguments.end());
    const auto log = sandbox.folder() / "window-manager.log";
    XClient client(server);
    const WindowFacts facts(client);
    const bool adopts = hasWindowsToAdopt(facts);
    process = std::make_unique<ChildProcess>(
        ChildProcess::Options{.command = command, .environment = environment, .log = log});
    waitUntil([&] { return isManaged(facts, client.root()) || !process->running(); });
    if (adopts && isManaged(facts, client.root()))
        return; // No probe: a full-screen window may hide the probe's window.
    auto probe = std::make_unique<Probe>(client);
    if (!isManaged(facts, client.root()) || !waitUntil([&] { return probe->isTakenCareOf(); }))
        throw HarnessError(name(kind) + " did not start: " + Sandbox::read(log));
    probe.reset();
    require("the window manager forgets the probe", [&] { return facts.clientList().empty(); });
}

void WindowManager::showDesktop(XClient& client, std::uint32_t index) const {
    if (which == WindowManagerKind::i3) { // i3 makes a desktop only on a switch to it.
        Environment environment = sandbox.environment();
        environment["DISPLAY"] = client.display();
        ChildProcess(
            {.command = {"i3-msg", "workspace", std::to_string(index + 1)}, .environment = environment})
            .waitForExit();
    } else {
        WindowCommands(client).setDesktopCount(2);
        WindowCommands(client).switchToDesktop(index);
    }
    require("the desktop is shown", [&] {
        return WindowFacts(client).numbers(client.root(), "_NET_CURRENT_DESKTOP") == std::vector{index};
    });
}

WindowManager::~WindowManager() {
    if (process)
        process->signal(SIGKILL);
}

} // namespace mirrolet::harness
