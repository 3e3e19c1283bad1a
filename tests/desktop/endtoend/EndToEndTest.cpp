#include "tests/desktop/endtoend/EndToEndTest.h"

#include "tests/desktop/harness/HarnessError.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <unistd.h>

namespace mirrolet {

using namespace harness;

namespace {

constexpr int fromEvdev = 8;
constexpr auto severalPolls = std::chrono::milliseconds(600);
constexpr int cornerOfScreen = 2; // A place over no window.

/// Returns `installed` for the window managers that start their settings service on the bus.
SessionBus::Services servicesFor(WindowManagerKind kind) {
    return kind == WindowManagerKind::xfwm4 || kind > WindowManagerKind::icewm
               ? SessionBus::Services::installed
               : SessionBus::Services::none;
}

} // namespace

EndToEndTest::EndToEndTest(WindowManagerKind kind, const XServer::Options& screen)
    : server(screen), bus(servicesFor(kind), server.with({})),
      manager(std::make_unique<WindowManager>(server, kind, &bus)) {
    pointer.move(cornerOfScreen, cornerOfScreen);
}

void EndToEndTest::TearDown() {
    if (!HasFailure() || !program)
        return;
    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    std::cout << "standard error of the program:\n" << program->log();
    const auto file =
        std::filesystem::temp_directory_path() / ("mirrolet-failed-" + std::to_string(getpid()) + ".png");
    facts.screenshot().save(file);
    std::cout << "screenshot: " << file.string() << std::endl;
}

void EndToEndTest::start(const std::string& defaults) {
    program =
        std::make_unique<Program>(&server, &bus, Program::Options{.defaults = Program::defaults(defaults)});
    require("the program takes its shortcuts", [this] {
        if (!program->child().running())
            throw HarnessError("the program ended: " + program->log());
        return isGrabbed(key::f);
    });
}

void EndToEndTest::startQuiet(const std::string& defaults) {
    start(R"("startMonitoringOnLaunch": false)" + (defaults.empty() ? "" : ", " + defaults));
}

/// Tries to grab the key. Grabs the server during the attempt, so that the attempt cannot disturb the
/// program.
bool EndToEndTest::isGrabbed(XClient& client, int evdevCode, int modifiers) {
    xcb_connection_t* xcb = client.xcb();
    const auto code = static_cast<xcb_keycode_t>(evdevCode + fromEvdev);
    const auto mask = static_cast<std::uint16_t>(modifiers);
    xcb_grab_server(xcb);
    const auto cookie =
        xcb_grab_key_checked(xcb, 0, client.root(), mask, code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const Reply<xcb_generic_error_t> error(xcb_request_check(xcb, cookie));
    if (!error)
        xcb_ungrab_key(xcb, code, client.root(), mask);
    xcb_ungrab_server(xcb);
    client.sync();
    return error != nullptr;
}

std::unique_ptr<CallWindow> EndToEndTest::showWindow(const CallWindow::Options& options) {
    auto window = std::make_unique<CallWindow>(server, options);
    giveFocusTo(*window);
    return window;
}

std::unique_ptr<CallWindow> EndToEndTest::showCall(std::uint32_t colour) {
    CallWindow::Options options;
    options.colour = colourName(colour);
    options.place = {60, 80, 400, 400}; // Square, so that the picture fills the panel.
    return std::make_unique<CallWindow>(server, options);
}

void EndToEndTest::giveFocusTo(const CallWindow& window) {
    commands.activate(window.window());
    require("the window has the focus", [&] { return facts.focus() == window.window(); });
}

xcb_window_t EndToEndTest::awaitPrompt() {
    return program->awaitPrompt(facts);
}

xcb_window_t EndToEndTest::awaitPanel() {
    require("the mirror is shown", [this] { return !program->prompt(facts) && program->panel(facts); });
    return program->panel(facts).value_or(XCB_NONE);
}

bool EndToEndTest::nothingShown() {
    return program->windows(facts).empty();
}

void EndToEndTest::awaitNothing() {
    require("neither prompt nor mirror is shown", [this] { return nothingShown(); });
}

bool EndToEndTest::nothingAppears() {
    return holdsFor([this] { return nothingShown(); }, severalPolls);
}

xcb_window_t EndToEndTest::openMirror(const CallWindow& call, std::uint32_t colour) {
    giveFocusTo(call);
    pressFrontmostShortcut();
    const xcb_window_t panel = awaitPanel();
    awaitColour(panel, colour);
    return panel;
}

std::uint32_t EndToEndTest::centreOf(xcb_window_t window) const {
    const Box box = facts.box(window);
    return facts.pixel(box.x + box.width / 2, box.y + box.height / 2);
}

void EndToEndTest::awaitColour(xcb_window_t panel, std::uint32_t colour) {
    require("the mirror shows " + colourName(colour), [&] { return isNear(centreOf(panel), colour); });
}

void EndToEndTest::clickCloseButton(xcb_window_t panel) {
    const Box box = facts.box(panel);
    const int x = box.x + 18;
    const int y = box.y + 18;
    pointer.move(x, y);
    // Looks beside the cross in the button.
    require("the close button is there", [&] { return (facts.pixel(x - 7, y) >> 16) > 0xc0; });
    pointer.click(x, y);
    pointer.move(cornerOfScreen, cornerOfScreen);
}

std::string colourName(std::uint32_t colour) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "%06x", colour);
    return text.data();
}

} // namespace mirrolet
