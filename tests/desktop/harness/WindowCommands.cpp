#include "tests/desktop/harness/WindowCommands.h"

#include "tests/desktop/harness/Wait.h"
#include "tests/desktop/harness/WindowFacts.h"

namespace mirrolet::harness {

namespace {
constexpr std::uint32_t fromPager = 2;
constexpr std::uint32_t iconicState = 3;
} // namespace

void WindowCommands::activate(xcb_window_t window) {
    client.sendToRoot(window, "_NET_ACTIVE_WINDOW", {fromPager, XCB_CURRENT_TIME, 0});
}

void WindowCommands::close(xcb_window_t window) {
    client.sendToRoot(window, "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, fromPager});
}

void WindowCommands::minimize(xcb_window_t window) {
    client.sendToRoot(window, "WM_CHANGE_STATE", {iconicState});
}

void WindowCommands::addState(xcb_window_t window, const std::string& state) {
    client.sendToRoot(window, "_NET_WM_STATE", {1, client.atom(state), 0, fromPager});
}

void WindowCommands::setDesktopCount(std::uint32_t count) {
    client.sendToRoot(client.root(), "_NET_NUMBER_OF_DESKTOPS", {count});
}

void WindowCommands::switchToDesktop(std::uint32_t index) {
    client.sendToRoot(client.root(), "_NET_CURRENT_DESKTOP", {index, XCB_CURRENT_TIME});
}

void WindowCommands::awaitManager() {
    const xcb_window_t window = xcb_generate_id(client.xcb());
    xcb_create_window(client.xcb(), XCB_COPY_FROM_PARENT, window, client.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    constexpr std::uint32_t place = 7;
    xcb_configure_window(client.xcb(), window, XCB_CONFIG_WINDOW_X, &place);
    const WindowFacts facts(client);
    require("the window manager answers", [&] { return facts.box(window).x == place; });
    xcb_destroy_window(client.xcb(), window);
    client.sync();
}

} // namespace mirrolet::harness
