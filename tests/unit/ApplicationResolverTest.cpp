#include "platform/desktop/applications/ApplicationResolver.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace mirrolet::platform::desktop {
namespace {

using namespace std::string_literals;

std::string entryText(const std::string& lines) {
    return "[Desktop Entry]\nType=Application\nName=Some name\n" + lines + "\n";
}

/// Returns desktop entries as distributions, browsers, Flatpak and snapd write them.
DesktopEntries recordedEntries() {
    const std::vector<std::pair<std::string, std::string>> recorded = {
        {"google-chrome", "Exec=/usr/bin/google-chrome-stable %U"},
        {"chrome-aaa-Default",
         "Exec=/opt/google/chrome/google-chrome --profile-directory=Default --app-id=aaa\n"
         "StartupWMClass=crx_aaa"},
        {"chrome-bbb-Default", "Exec=/opt/google/chrome/google-chrome --app-id=bbb\nStartupWMClass=crx_bbb"},
        {"brave-browser", "Exec=brave-browser-stable %U"},
        {"brave-aaa-Default", "Exec=brave-browser --app-id=aaa\nStartupWMClass=crx_aaa"},
        {"msedge-ccc-Default", "Exec=microsoft-edge --app-id=ccc"},
        {"org.telegram.desktop", "Exec=/usr/bin/flatpak run --command=telegram org.telegram.desktop\n"
                                 "X-Flatpak=org.telegram.desktop"},
        {"org.libreoffice.LibreOffice", "Exec=flatpak run org.libreoffice.LibreOffice\nX-Flatpak=x"},
        {"org.libreoffice.LibreOffice.writer", "Exec=flatpak run org.libreoffice.LibreOffice "
                                               "--writer\nX-Flatpak=x\nStartupWMClass=libreoffice-writer"},
        {"firefox_aid", "Exec=/snap/bin/firefox.aid\nX-SnapInstanceName=firefox"},
        {"firefox_firefox",
         "Exec=env BAMF_DESKTOP_FILE_HINT=x /snap/bin/firefox %u\nX-SnapInstanceName=firefox"},
        {"code-url-handler", "Exec=/usr/share/code/code --open-url %U\nStartupWMClass=Code\nNoDisplay=true"},
        {"code", "Exec=/usr/share/code/code %F\nStartupWMClass=Code"},
        {"signal-desktop", "Exec=/opt/Signal/signal-desktop %U\nStartupWMClass=Signal"},
        {"org.gnome.Terminal", "Exec=gnome-terminal"},
        {"org.gnome.Nautilus", "Exec=nautilus --new-window"},
        {"debian-xterm", "Exec=xterm"},
        {"htop", "Exec=htop\nTerminal=true"},
        {"python3.11", "Exec=/usr/bin/python3.11\nTerminal=true"},
        {"someones-script", "Exec=python3 /opt/some.py"},
        {"idle", "Exec=python3.11 -m idlelib"},
        {"pager", "Exec=less-pager\nTerminal=true"},
        {"suite-start", "Exec=suite\nStartupWMClass=Suite"},
        {"suite.writer", "Exec=suite-writer\nStartupWMClass=Suite"},
        {"suite", "Exec=suite\nStartupWMClass=Suite"},
        {"viewer-links", "Exec=viewer\nStartupWMClass=Viewer\nNoDisplay=true"},
        {"viewer-window", "Exec=viewer-gui\nStartupWMClass=Viewer"},
        {"org.kde.kate", "Exec=kate -b %U"},
        {"box-gimp", "Exec=distrobox-enter -n box -- gimp %U\nStartupWMClass=gimp-2.10"},
        {"net.sf.player", "Exec=env GDK_BACKEND=x11 /usr/bin/player-bin --gui"},
    };
    DesktopEntries entries;
    for (const auto& [id, lines] : recorded)
        entries.add(
            parseDesktopEntry(entryText(lines), id, "/usr/share/applications/" + id + ".desktop").value());
    return entries;
}

ProcessFacts program(const std::string& executable) {
    return {100, "", executable, "", "0::/user.slice\n", ""};
}

const std::string folder = "/usr/share/applications/";

ProcessFacts startedBy(const std::string& entry, const std::string& executable,
                       const std::string& pid = "100") {
    auto facts = program(executable);
    facts.environment = "HOME=/h\0GIO_LAUNCHED_DESKTOP_FILE="s + entry +
                        ".desktop\0GIO_LAUNCHED_DESKTOP_FILE_PID="s + pid + "\0"s;
    return facts;
}

ProcessFacts inFlatpak(const std::string& id) {
    auto facts = program("/app/bin/program");
    facts.flatpakInfo = "[Application]\nname=" + id + "\nruntime=r\n\n[Instance]\nname=other\n";
    return facts;
}

ProcessFacts inGroup(const std::string& cgroup, const std::string& executable) {
    auto facts = program(executable);
    facts.cgroup = "0::/user.slice/user-1000.slice/app.slice/" + cgroup + "\n";
    return facts;
}

/// Makes the names of a window from `words`, which holds its instance, its class and its toolkit identifier.
WindowClass windowClass(const std::string& words) {
    WindowClass window;
    std::istringstream(words) >> window.instance >> window.name >> window.gtkApplicationId;
    return window;
}

struct Case {
    const char* what;
    const char* window; ///< The names of the window, as windowClass() takes them.
    ProcessFacts process;
    const char* expected; ///< The id of the entry that is found, or "" for none.
};

TEST(ApplicationResolverTest, FindsTheEntryOfAWindow) {
    const auto entries = recordedEntries();
    const auto chrome = program("/opt/google/chrome/chrome");
    const auto chromeOfAaa = startedBy(folder + "chrome-aaa-Default", "/opt/google/chrome/chrome");
    const auto telegram = inGroup("app-flatpak-org.telegram.desktop-2171.scope", "");
    const std::string uuid = "0c4ddff5\\x2d3e80\\x2d4dd3\\x2db0b2\\x2d4c1f6d6a2a55";
    const auto firefox = inGroup("snap.firefox.firefox-" + uuid + ".scope", "/snap/firefox/1/firefox");
    const auto olderFirefox = inGroup("snap.firefox.firefox." + uuid + ".scope", "/snap/firefox/1/firefox");
    const auto insideSnap = inGroup("snap.code.code-" + uuid + ".scope", "/usr/bin/xterm");
    const auto inherited = startedBy(folder + "org.gnome.Terminal", "/usr/bin/xterm", "99");
    const auto autostarted = startedBy("/home/u/.config/autostart/org.kde.kate", "/opt/tool");
    const auto copied = startedBy("/home/u/.local/share/applications/someones/script", "/opt/tool");
    const auto textProgram = startedBy(folder + "htop", "/usr/bin/xterm");
    const auto contained = inGroup("libpod-0f3a.scope", "/usr/bin/gimp-2.10");
    const std::vector<Case> cases = {
        {"browser", "google-chrome Google-chrome", chrome, "google-chrome"},
        {"web application of it", "crx_aaa Google-chrome", chrome, "chrome-aaa-Default"},
        {"another one of the same process", "crx_bbb Google-chrome", chrome, "chrome-bbb-Default"},
        {"the same one in another browser", "crx_aaa Brave-browser", program("/opt/brave.com/brave/brave"),
         "brave-aaa-Default"},
        {"one known by its number only", "crx__ccc Microsoft-edge", program("/e"), "msedge-ccc-Default"},
        {"nothing after the prefix", "crx_ Google-chrome", chrome, "google-chrome"},
        {"browser that its application started", "google-chrome Google-chrome", chromeOfAaa, "google-chrome"},
        {"second application of it", "crx_bbb Google-chrome", chromeOfAaa, "chrome-bbb-Default"},
        {"Flatpak", "t TelegramDesktop", inFlatpak("org.telegram.desktop"), "org.telegram.desktop"},
        {"Flatpak by control group", "t TelegramDesktop", telegram, "org.telegram.desktop"},
        {"one of several entries of a Flatpak", "libreoffice libreoffice-writer",
         inFlatpak("org.libreoffice.LibreOffice"), "org.libreoffice.LibreOffice.writer"},
        {"Flatpak without an entry is not the system's", "kate kate", inFlatpak("org.other.App"), ""},
        {"the system's program is not the Flatpak", "d org.telegram.desktop", program("/opt/t"), ""},
        {"Snap", "Navigator firefox", firefox, "firefox_firefox"},
        {"Snap of older make", "Navigator firefox", olderFirefox, "firefox_firefox"},
        {"window of a snap without names", "", firefox, "firefox_firefox"},
        {"program started from within a snap", "xterm XTerm", insideSnap, "debian-xterm"},
        {"Electron program", "signal Signal", program("/opt/Signal/signal-desktop"), "signal-desktop"},
        {"handler of links beside the program", "code Code", program("/usr/share/code/code"), "code"},
        {"Electron without a name of its own", "electron Electron", program("/usr/lib/electron25"), ""},
        {"by toolkit", "g G org.gnome.Nautilus", program("/usr/bin/another"), "org.gnome.Nautilus"},
        {"launcher's note", "tool Tool", autostarted, "org.kde.kate"},
        {"launcher's note of a copy in a subfolder", "tool Tool", copied, "someones-script"},
        {"inherited note counts for nothing", "xterm XTerm", inherited, "debian-xterm"},
        {"terminal opened for a text program", "xterm XTerm", textProgram, "htop"},
        {"program of a terminal by name", "htop Htop", program("/usr/bin/xterm"), "htop"},
        {"script is not its interpreter", "tk Tk", program("/usr/bin/python3.11"), ""},
        {"terminal is not the text program in it", "x X", program("/usr/bin/less-pager"), ""},
        {"of several, the one that runs this", "s Suite", program("/o/suite-writer"), "suite.writer"},
        {"of several, the one that is named so", "s Suite", program("/o/wrapper"), "suite"},
        {"one that menus show goes before", "v Viewer", program("/usr/bin/viewer"), "viewer-window"},
        {"last part of the file ID", "kate Kate", program("/usr/bin/kate"), "org.kde.kate"},
        {"program behind env", "x Strange", program("/usr/bin/player-bin"), "net.sf.player"},
        {"container", "gimp-2.10 Gimp-2.10", contained, "box-gimp"},
        {"remote client", "kate kate", {}, "org.kde.kate"},
        {"nothing known", "", {}, ""},
    };
    for (const auto& [what, window, process, expected] : cases) {
        const auto* entry = entryOfWindow(windowClass(window), process, entries);
        EXPECT_EQ(entry ? entry->id : "", expected) << what;
    }
}

} // namespace
} // namespace mirrolet::platform::desktop
