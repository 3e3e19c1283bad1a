#include "tests/desktop/endtoend/AnyDesktopTest.h"

#include "tests/desktop/harness/HarnessError.h"

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <unistd.h>

namespace mirrolet {

using namespace harness;

namespace {
constexpr auto severalPolls = std::chrono::milliseconds(600);
} // namespace

AnyDesktopTest::AnyDesktopTest(std::unique_ptr<TestDesktop> desktop) : desktop(std::move(desktop)) {
    pointer.move(2, 2); // No window is at this place.
}

void AnyDesktopTest::TearDown() {
    if (!HasFailure() || !program)
        return;
    std::cout << "standard error of the program:\n" << program->log();
    const auto file =
        std::filesystem::temp_directory_path() / ("mirrolet-failed-" + std::to_string(getpid()) + ".png");
    desktop->screenshot({0, 0, 1280, 800}).save(file);
    std::cout << "screenshot: " << file.string() << std::endl;
}

void AnyDesktopTest::start(const std::string& defaults) {
    program = std::make_unique<Program>(
        &desktop->display(), &desktop->bus(),
        Program::Options{.defaults = Program::defaults(defaults), .environment = environment});
    require("the program takes its shortcuts", [this] {
        if (!program->child().running())
            throw HarnessError("the program ended: " + program->log());
        return desktop->hasShortcuts();
    });
}

void AnyDesktopTest::startQuiet(const std::string& defaults) {
    start(R"("startMonitoringOnLaunch": false)" + (defaults.empty() ? "" : ", " + defaults));
}

void AnyDesktopTest::installApplication(const std::string& identifier, const std::string& name) {
    machine.write("share/applications/" + identifier + ".desktop",
                  "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=true\n");
}

std::unique_ptr<SourceWindow> AnyDesktopTest::showNotes(bool isFullScreen) {
    auto window = desktop->show({.title = "Notes",
                                 .application = "Editor",
                                 .colours = "202020", // notesColour
                                 .width = 500,
                                 .height = 400,
                                 .fullScreen = isFullScreen});
    window->activate(); // Strict focus stealing prevention keeps the focus from a new window.
    awaitFocus(*window);
    return window;
}

void AnyDesktopTest::recolour(const SourceWindow& window, const Quarters& colours) {
    window.tell("colour " + colourNames(colours));
}

void AnyDesktopTest::awaitFocus(const SourceWindow& window) {
    require("the window has the focus", [&] { return window.hasFocus(); });
}

bool AnyDesktopTest::gotPress(const SourceWindow& window) {
    return testing::Value(window.keys(), testing::Contains(testing::EndsWith("press")));
}

/// Checks the focus and then the screen. The X server can report that the prompt has the focus before the
/// compositor knows the prompt's surface, and until then the prompt gets no keys.
xcb_window_t AnyDesktopTest::awaitPrompt() {
    const xcb_window_t prompt = program->awaitPrompt(facts);
    require("the prompt is on the screen", [&] {
        const Box box = facts.box(prompt);
        const Box middle{box.x + box.width / 4, box.y + box.height / 4, box.width / 2, box.height / 2};
        const Picture own = facts.content(prompt);
        const Picture seen = desktop->screenshot(middle);
        bool isPlain = true;
        for (int y = 0; y < seen.height; ++y)
            for (int x = 0; x < seen.width; ++x) {
                isPlain = isPlain && seen.at(x, y) == seen.at(0, 0);
                if (!isNear(seen.at(x, y), own.at(x + box.width / 4, y + box.height / 4)))
                    return false;
            }
        return !isPlain;
    });
    return prompt;
}

void AnyDesktopTest::decline() {
    awaitPrompt();
    keyboard.stroke({key::escape});
    awaitNothing();
}

xcb_window_t AnyDesktopTest::awaitPanel() {
    require("the mirror is shown", [this] { return !program->prompt(facts) && program->panel(facts); });
    return program->panel(facts).value_or(XCB_NONE);
}

xcb_window_t AnyDesktopTest::accept(const Quarters& colours) {
    awaitPrompt();
    keyboard.stroke({key::returnKey});
    const xcb_window_t panel = awaitPanel();
    awaitColours(colours);
    return panel;
}

xcb_window_t AnyDesktopTest::openMirror(const Quarters& colours) {
    pressFrontmostShortcut();
    const xcb_window_t panel = awaitPanel();
    awaitColours(colours);
    return panel;
}

void AnyDesktopTest::awaitNothing() {
    require("neither prompt nor mirror is shown", [this] { return nothingShown(); });
}

bool AnyDesktopTest::nothingAppears() const {
    return holdsFor([this] { return nothingShown(); }, severalPolls);
}

bool AnyDesktopTest::mirrorStays() const {
    return holdsFor([this] { return program->panel(facts) && !program->prompt(facts); }, severalPolls);
}

bool AnyDesktopTest::shows(const Quarters& colours) const {
    const auto panel = program->panel(facts);
    const Box box = panel ? facts.box(*panel) : Box{};
    if (box.width == 0) // The panel may have gone meanwhile.
        return false;
    const Picture picture = desktop->screenshot(box);
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const int x = picture.width * (i % 2 == 0 ? 1 : 3) / 4;
        const int y = picture.height * (i < 2 ? 1 : 3) / 4;
        if (!isNear(picture.at(x, y), colours.at(i)))
            return false;
    }
    return true;
}

void AnyDesktopTest::awaitColours(const Quarters& colours) const {
    require("the mirror shows " + colourNames(colours), [&] { return shows(colours); });
}

void AnyDesktopTest::awaitLive(const SourceWindow& window) const {
    for (const auto& colours : {otherColours, fourColours}) {
        recolour(window, colours);
        awaitColours(colours);
    }
}

std::string colourNames(const std::array<std::uint32_t, 4>& colours) {
    const auto [first, second, third, fourth] = colours;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%06x,%06x,%06x,%06x", first, second, third, fourth);
    return text.data();
}

} // namespace mirrolet
