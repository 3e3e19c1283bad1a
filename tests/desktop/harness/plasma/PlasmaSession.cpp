#include "tests/desktop/harness/plasma/PlasmaSession.h"

#include "tests/desktop/harness/HarnessError.h"
#include "tests/desktop/harness/plasma/TitleBars.h"

#include <csignal>
#include <cstdlib>
#include <sstream>
#include <unistd.h>

namespace mirrolet::harness {

namespace {

constexpr auto socketName = "wayland-0";
constexpr auto testInterfaces = "org_kde_kwin_fake_input,org_kde_plasma_window_management";

/// KWin runs this script as soon as X clients and Wayland clients can connect. The script writes two
/// variables to a file, because KWin gives them only to its children. The script ends when the test process
/// ends, even after a crash, and KWin then ends too.
constexpr auto announcerFile = "announce";
constexpr auto announcementFile = "announce.out";
constexpr auto announcer = "#!/bin/sh\n"
                           "printf '%s\\n' \"$DISPLAY\" \"$XAUTHORITY\" >\"$0.new\"\n"
                           "mv \"$0.new\" \"$0.out\"\n"
                           "exec tail --pid=\"$TEST_PROCESS\" -f /dev/null\n";

/// Puts a copy of KWin first on PATH. The installed file asks for a capability (a privilege from the kernel),
/// which a container may refuse. The copy does not ask for it.
void copyWithoutCapabilities(const Sandbox& sandbox, Environment& environment) {
    const auto folder = sandbox.folder() / "bin";
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file("/usr/bin/kwin_wayland", folder / "kwin_wayland");
    environment["PATH"] = folder.string() + ":" + environment["PATH"];
}

/// KWin 6 streams windows only if it finds a render node, the file of a GPU. Where the machine has none, a
/// library that is loaded into KWin makes one up.
void addRenderNode(Environment& environment) {
    if (PlasmaSession::generation() < 6 || std::filesystem::exists("/dev/dri/renderD128"))
        return;
#ifdef RENDER_NODE_LIBRARY
    environment["LD_PRELOAD"] = RENDER_NODE_LIBRARY;
#else
    throw HarnessError("KWin 6 needs a GPU or, when these tests are built, the Debian packages libgbm-dev, "
                       "libdrm-dev and libepoxy-dev");
#endif
}

} // namespace

PlasmaSession::PlasmaSession() : PlasmaSession(Options{}) {}

PlasmaSession::PlasmaSession(const Options& options) : options(options) {
    requireProgram("kwin_wayland_wrapper", "kwin-wayland");
    requireProgram("Xwayland", "xwayland");
    writeSettings();
    streams.emplace(ownEnvironment(), options.sessionManager);
    const auto self = std::filesystem::read_symlink("/proc/self/exe").string();
    writeEntry("mirrolet-test", "[Desktop Entry]\nType=Application\nName=Test\nNoDisplay=true\nExec=" + self +
                                    "\nX-KDE-Wayland-Interfaces=" + testInterfaces + "\n");
    updateDatabase();
    start();
}

PlasmaSession::~PlasmaSession() {
    unsetenv("XAUTHORITY");
}

/// Sets XDG_CONFIG_DIRS, because KDE reads desktop entries only if it finds the system's description of a
/// menu there.
Environment PlasmaSession::ownEnvironment() const {
    Environment environment = sessionBus.with(sandbox.environment());
    environment["XDG_CONFIG_DIRS"] = "/etc/xdg";
    return environment;
}

/// Switches animations off, because tests read the pixels of the screen. Sets up two virtual desktops.
void PlasmaSession::writeSettings() const {
    sandbox.write("config/kdeglobals", "[KDE]\nAnimationDurationFactor=0\n");
    const std::string decoration = options.titleBars ? writeTitleBars(sandbox) : "";
    sandbox.write("config/kwinrc", "[Desktops]\nNumber=2\nRows=1\n" + decoration + options.kwinSettings);
    sandbox.write("config/kxkbrc", "[Layout]\nUse=true\nLayoutList=" + options.keyboardLayouts + "\n");
    const auto script = sandbox.write(announcerFile, announcer);
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
}

void PlasmaSession::writeEntry(const std::string& id, const std::string& entry) const {
    sandbox.write("data/applications/" + id + ".desktop", entry);
}

void PlasmaSession::updateDatabase() const {
    const std::string program = "kbuildsycoca" + std::to_string(generation());
    requireProgram(program, "libkf" + std::to_string(generation()) + "service-bin");
    ChildProcess tool({.command = {program}, .environment = ownEnvironment()});
    if (tool.waitForExit() != 0)
        throw HarnessError(program + " failed");
}

/// Starts KWin's wrapper. The wrapper holds the sockets, and starts KWin again if KWin crashes.
void PlasmaSession::start() {
    Environment environment = ownEnvironment();
    environment.insert({"KWIN_SCREENSHOT_NO_PERMISSION_CHECKS", "1"});
    if (!options.checksPermissions)
        environment.insert({"KWIN_WAYLAND_NO_PERMISSION_CHECKS", "1"});
    environment["TEST_PROCESS"] = std::to_string(getpid());
    copyWithoutCapabilities(sandbox, environment);
    addRenderNode(environment);
    const auto width = std::to_string(options.width);
    const auto height = std::to_string(options.height);
    process = std::make_unique<ChildProcess>(
        ChildProcess::Options{.command = {"kwin_wayland_wrapper", "--virtual", "--xwayland", "--width", width,
                                          "--height", height, "--no-lockscreen", "--no-kactivities",
                                          "--exit-with-session", sandbox.folder() / announcerFile},
                              .environment = environment,
                              .log = sandbox.folder() / "kwin.log"});
    awaitDisplay();
}

/// Waits for the file of the script `announcer`, and reads it. Sets XAUTHORITY, so that X clients in this
/// process can connect to XWayland too.
void PlasmaSession::awaitDisplay() {
    const auto announcement = sandbox.folder() / announcementFile;
    waitUntil([&] { return std::filesystem::exists(announcement) || !process->running(); });
    if (!std::filesystem::exists(announcement))
        throw HarnessError("KWin did not start: " + compositorLog());
    std::istringstream lines(Sandbox::read(announcement));
    std::getline(lines, name);
    std::getline(lines, authority);
    setenv("XAUTHORITY", authority.c_str(), 1);
}

int PlasmaSession::generation() {
    return isInstalled("kbuildsycoca6") ? 6 : 5;
}

pid_t PlasmaSession::compositor() const {
    const auto wrapper = std::to_string(process->pid());
    std::istringstream children(Sandbox::read("/proc/" + wrapper + "/task/" + wrapper + "/children"));
    pid_t child = 0;
    children >> child;
    return child;
}

void PlasmaSession::crashCompositor() {
    std::filesystem::remove(sandbox.folder() / announcementFile);
    if (const pid_t kwin = compositor(); kwin > 0)
        ::kill(kwin, SIGKILL);
    awaitDisplay();
}

Environment PlasmaSession::with(Environment environment) const {
    environment = sessionBus.with(XDisplay::with(std::move(environment)));
    const Environment own = ownEnvironment();
    // All programs of a session share one folder of desktop entries, and one database that any program may
    // update.
    for (const char* variable : {"XDG_RUNTIME_DIR", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_DIRS"})
        environment[variable] = own.at(variable);
    environment["XAUTHORITY"] = authority;
    environment["WAYLAND_DISPLAY"] = socketName;
    environment["XDG_SESSION_TYPE"] = "wayland";
    environment["XDG_CURRENT_DESKTOP"] = "KDE";
    environment["KDE_FULL_SESSION"] = "true";
    environment.insert({"KDE_SESSION_VERSION", std::to_string(generation())});
    return environment;
}

std::string PlasmaSession::waylandSocket() const {
    return sandbox.folder() / "runtime" / socketName;
}

std::string PlasmaSession::compositorLog() const {
    return Sandbox::read(sandbox.folder() / "kwin.log");
}

} // namespace mirrolet::harness
