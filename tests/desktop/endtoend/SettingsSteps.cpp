#include "tests/desktop/endtoend/SettingsSteps.h"

#include "tests/desktop/harness/HarnessError.h"

#include <algorithm>

namespace mirrolet {

using namespace harness;

namespace {

std::string entry(const std::string& name) {
    return "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=true\nStartupWMClass=" + name + "\n";
}

} // namespace

SettingsSteps::SettingsSteps(const XServer::Options& screen)
    : EndToEndTest(WindowManagerKind::openbox, screen) {
    environment = ScreenReader::environment();
    for (const std::string name : {"Alpha", "Beta", "Gamma"})
        home->write("data/applications/org.example." + name + ".desktop", entry(name));
}

void SettingsSteps::openSettings(const std::string& defaults) {
    // Hides the applications that are installed on the machine.
    environment["XDG_DATA_DIRS"] = home->folder() / "none";
    program = std::make_unique<Program>(
        &server, &bus,
        Program::Options{.defaults = "{" + defaults + "}", .environment = environment, .home = home});
    require("the program takes its shortcuts", [this] { return isGrabbed(key::f); });
    ASSERT_EQ(startOnceMore(), 0);
    awaitWindow();
}

int SettingsSteps::startOnceMore() {
    return Program(&server, &bus, {.home = home}).child().waitForExit().value_or(-1);
}

std::optional<xcb_window_t> SettingsSteps::titled(const std::string& title) {
    for (const xcb_window_t window : program->windows(facts))
        if (facts.text(window, "_NET_WM_NAME") == title)
            return window;
    return std::nullopt;
}

xcb_window_t SettingsSteps::awaitWindow(const std::string& title) {
    require(title + " is shown and has the focus", [&] {
        const auto window = titled(title);
        return window && facts.active() == *window;
    });
    return titled(title).value_or(XCB_NONE);
}

std::optional<SettingsSteps::Element> SettingsSteps::seek(const std::string& role, const std::string& name) {
    const auto all = elements();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Element& each) {
        return each.role == role && each.isNamed(name) && each.box.x > 0;
    });
    return found == all.end() ? std::nullopt : std::optional(*found);
}

SettingsSteps::Element SettingsSteps::find(const std::string& role, const std::string& name) {
    std::optional<Element> found;
    require("there is a " + role + " named " + name, [&] {
        found = seek(role, name);
        return found.has_value();
    });
    return *found;
}

void SettingsSteps::click(const Element& element) {
    // Assistive software gets places in pixels before scaling, but the pointer needs pixels after scaling.
    const auto found = environment.find("QT_SCALE_FACTOR");
    const int scale = found == environment.end() ? 1 : std::stoi(found->second);
    pointer.click((element.box.x + element.box.width / 2) * scale,
                  (element.box.y + element.box.height / 2) * scale);
}

void SettingsSteps::choosePage(const std::string& name) {
    click("page tab", name);
    find(name == "PiP" ? "radio button" : "check box",
         name == "PiP" ? "Check All Windows" : "Launch at login");
}

void SettingsSteps::tabTo(const std::string& role, const std::string& name) {
    constexpr int controlsAtMost = 30;
    for (int steps = 0; steps < controlsAtMost; ++steps) {
        if (const auto element = seek(role, name); element && element->focused)
            return;
        keyboard.stroke({key::tab});
    }
    throw HarnessError("Tab does not come to the " + role + " named " + name);
}

void SettingsSteps::awaitSaved(const std::string& text) {
    require("saved: " + text,
            [&] { return Sandbox::read(program->defaultsFile()).find(text) != std::string::npos; });
}

std::filesystem::path SettingsSteps::autostartFile() const {
    return home->configHome() / "autostart/app.mirrolet.Mirrolet.desktop";
}

} // namespace mirrolet
