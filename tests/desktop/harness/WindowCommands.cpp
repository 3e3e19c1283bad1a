#include "tests/desktop/harness/WindowCommands.h"

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

void WindowCommands::removeState(xcb_window_t window, const std::string& state) {
    client.sendToRoot(window, "_NET_WM_STATE", {0, client.atom(state), 0, fromPager});
}

void WindowCommands::setDesktopCount(std::uint32_t count) {
    client.sendToRoot(client.root(), "_NET_NUMBER_OF_DESKTOPS", {count});
}

void WindowCommands::switchToDesktop(std::uint32_t index) {
    client.sendToRoot(client.root(), "_NET_CURRENT_DESKTOP", {index, XCB_CURRENT_TIME});
}

void WindowCommands::moveToDesktop(xcb_window_t window, std::uint32_t index) {
    client.sendToRoot(window, "_NET_WM_DESKTOP", {index, fromPager});
}

} // namespace mirrolet::harness
