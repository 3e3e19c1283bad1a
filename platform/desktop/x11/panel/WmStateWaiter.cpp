#include "platform/desktop/x11/panel/WmStateWaiter.h"

#include "platform/desktop/x11/server/Property.h"
#include "platform/desktop/x11/windows/WindowManagerCheck.h"

#include <chrono>

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr std::chrono::milliseconds longestWait{500};
constexpr std::uint32_t withdrawn = 0;
constexpr std::uint32_t iconic = 3;
constexpr std::uint32_t stateLength = 8; // In bytes.

} // namespace

WmStateWaiter::WmStateWaiter(X11Connection& connection, const PanelEvents& events, xcb_window_t window)
    : connection(connection), window(window) {
    subscriptions[0] = events.subscribe<xcb_map_notify_event_t>([this](const auto&) { changed(); });
    subscriptions[1] = events.subscribe<xcb_unmap_notify_event_t>([this](const auto&) { changed(); });
    subscriptions[2] = events.subscribe<xcb_property_notify_event_t>([this](const auto& event) {
        if (event.atom == this->connection.atoms().WM_STATE)
            changed();
    });
}

void WmStateWaiter::awaitMapped() {
    // Iconic means that the window manager has handled the map, but keeps the window hidden, for example on
    // another workspace.
    await([this](const State& now) {
        return now.managed == iconic || (now.mapped && (now.managed != withdrawn || !managerLives()));
    });
}

void WmStateWaiter::awaitWithdrawn() {
    await([this](const State& now) { return !now.mapped && (now.managed == withdrawn || !managerLives()); });
}

void WmStateWaiter::await(const std::function<bool(const State&)>& wanted) {
    const MutexLock lock(stateMutex);
    change.waitFor(stateMutex, longestWait, [&] {
        const State now = state();
        return !now.known || wanted(now);
    });
}

WmStateWaiter::State WmStateWaiter::state() const {
    const auto attributesCookie = xcb_get_window_attributes(connection.xcb(), window);
    const auto wordCookie = requestProperty(connection, window, connection.atoms().WM_STATE, stateLength);
    const auto attributes = connection.reply<xcb_get_window_attributes_reply>(attributesCookie, windowGone);
    const auto items = takeProperty(connection, wordCookie).items(connection.atoms().WM_STATE);
    return {attributes != nullptr, attributes && attributes->map_state != XCB_MAP_STATE_UNMAPPED,
            items.empty() ? withdrawn : items.front()};
}

/// Returns whether a window manager is running. WM_STATE does not tell this, because the property stays on
/// the windows when a window manager ends.
bool WmStateWaiter::managerLives() const {
    WindowManagerCheck check(connection);
    return check.askManager() && check.managerLives();
}

void WmStateWaiter::changed() {
    const MutexLock lock(stateMutex);
    change.notifyAll();
}

} // namespace mirrolet::platform::desktop::x11
