// Takes the screenshots for README.md and docs/, in the folder that MIRROLET_SCREENSHOTS names. Fails if a
// step does not happen. Uses the steps of the end-to-end tests.

#include "tests/desktop/endtoend/SettingsSteps.h"
#include "tests/desktop/harness/DesktopServices.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace mirrolet {
namespace {

using namespace harness;

struct Look {
    const char* name;
    bool dark;
    int scale;
};

void PrintTo(const Look& look, std::ostream* out) {
    *out << look.name;
}

class Screenshots : public SettingsSteps, public testing::WithParamInterface<Look> {
  protected:
    /// A scan of this many applications takes long enough for a screenshot of the scan.
    static constexpr int manyEntries = 6000;

    Screenshots() : SettingsSteps({.width = 2560, .height = 1600}) {
        environment["QT_SCALE_FACTOR"] = std::to_string(GetParam().scale);
        if (GetParam().dark)
            makeDark();
        const char* names[] = {"Browser", "Calendar", "Files", "Mail", "Music", "Terminal", "WhatsApp"};
        for (const char* name : {"Alpha", "Beta", "Gamma"})
            std::filesystem::remove(home->dataHome() / "applications" /
                                    (std::string("org.example.") + name + ".desktop"));
        for (int index = 0; index < 7; ++index)
            addApplication(names[index], index);
    }

    /// Writes dark colours into the file from which Qt reads the colours of the desktop.
    void makeDark() {
        environment["XDG_CURRENT_DESKTOP"] = "KDE";
        environment["KDE_SESSION_VERSION"] = "5";
        const std::string colours = "BackgroundNormal=42,46,50\nForegroundNormal=252,252,252\n";
        home->write("config/kdeglobals", "[Colors:Window]\n" + colours + "[Colors:View]\n" + colours +
                                             "[Colors:Button]\n" + colours +
                                             "[Colors:Selection]\nBackgroundNormal=61,174,233\n"
                                             "[General]\nfont=DejaVu Sans,9,-1,5,50,0,0,0,0,0\n");
    }

    void addApplication(const std::string& name, int index) {
        const char* colours[] = {"#3478f6", "#e5484d", "#f5a623", "#30a46c", "#8e4ec6", "#30363d", "#25d366"};
        const auto icon =
            home->write("icons/" + name + ".svg",
                        "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 32 32'><rect x='2' "
                        "y='2' width='28' height='28' rx='7' fill='" +
                            std::string(colours[index]) +
                            "'/><circle cx='16' cy='16' r='7' fill='white' fill-opacity='0.85'/></svg>");
        const std::string id = name == "WhatsApp" ? "net.whatsapp." : "org.example.";
        home->write("data/applications/" + id + name + ".desktop",
                    "[Desktop Entry]\nType=Application\nExec=true\nName=" + name + "\nIcon=" + icon.string() +
                        "\n");
    }

    void take(const std::string& name, const Box& box) const {
        const char* folder = std::getenv("MIRROLET_SCREENSHOTS");
        ASSERT_NE(folder, nullptr) << "names the folder for the pictures";
        pointerOut();
        Picture last;
        require("the picture stands still", [&] {
            const Picture now = facts.screenshot(box);
            return std::exchange(last, now) == now;
        });
        last.save(std::filesystem::path(folder) / (name + "-" + GetParam().name + ".png"));
    }
    void take(const std::string& name, xcb_window_t window) const { take(name, facts.box(window)); }

    void pointerOut() const { Pointer(facts.connection()).move(2, 2); }
};

TEST_P(Screenshots, OfTheSettings) {
    home->write("config/autostart", "A file where the folder would be.");
    openSettings(R"("startMonitoringOnLaunch": true)");
    const xcb_window_t window = awaitWindow();
    take("settings-general", window);
    choosePage("PiP");
    find("list item", "WhatsApp");
    take("settings-pip", window);
    click("radio button", "Check All Windows");
    awaitSaved("allWindows");
    take("settings-pip-all-windows", window);
    click("radio button", "Check Specific Windows");
    choosePage("General");
    for (int index = 0; index < manyEntries; ++index)
        home->write("data/applications/many" + std::to_string(index) + ".desktop",
                    "[Desktop Entry]\nType=Application\nExec=true\nName=Application\n");
    click("page tab", "PiP");
    find("label", "Scanning installed apps…");
    const Box scan = facts.box(window);
    facts.screenshot(scan).save(std::filesystem::path(std::getenv("MIRROLET_SCREENSHOTS")) /
                                (std::string("settings-scan-") + GetParam().name + ".png"));
    choosePage("General");
    click("check box", "Launch at login");
    const xcb_window_t alert = awaitWindow("Launch at Login");
    find("push button", "OK");
    take("settings-alert", facts.topLevel(alert));
}

TEST_P(Screenshots, OfACall) {
    const Picom compositor(server);
    const CallWindow ground(server, {.title = "Ground",
                                     .wmClass = "Ground",
                                     .wmInstance = "ground",
                                     .place = {0, 0, 2560, 1600},
                                     .colour = GetParam().dark ? "20262e" : "5b7290",
                                     .type = "_NET_WM_WINDOW_TYPE_DESKTOP"});
    program = std::make_unique<Program>(
        &server, &bus,
        Program::Options{.defaults = Program::defaults(), .environment = environment, .home = home});
    const CallWindow call(server);
    const auto wider = [](Box box, int by) {
        return Box{box.x - by, box.y - by, box.width + 2 * by, box.height + 2 * by};
    };
    take("prompt", wider(facts.box(awaitPrompt()), 16));
    keyboard.stroke({key::returnKey});
    const xcb_window_t panel = awaitPanel();
    require("the mirror shows the call", [&] { return centreOf(panel) != 0; });
    take("mirror", wider(facts.box(panel), 16));
}

INSTANTIATE_TEST_SUITE_P(Looks, Screenshots,
                         testing::Values(Look{"light", false, 1}, Look{"dark", true, 1},
                                         Look{"light-200", false, 2}, Look{"dark-200", true, 2}),
                         [](const auto& each) {
                             std::string name = each.param.name;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

} // namespace
} // namespace mirrolet
