#include "platform/desktop/x11/panel/PanelStack.h"

#include "platform/desktop/x11/panel/StackingQuery.h"
#include "platform/desktop/x11/server/ExpectErrors.h"

#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

// The errors that moving a window causes if the window or its new sibling is gone. The new sibling is the
// window right above or below which the moved window is placed. The server answers BadMatch if the sibling
// still exists, but has another parent now.
constexpr ErrorSet siblingGone = windowGone | ErrorSet{XError::match};

} // namespace

PanelStack::PanelStack(X11Connection& connection) : connection(connection) {
    const auto root = connection.root();
    const auto check = [this](const auto&) { requestCheck(); };
    subscriptions.push_back(connection.subscribe<xcb_configure_notify_event_t>(
        root, [this](const auto& event) { configured(event); }));
    subscriptions.push_back(connection.subscribe<xcb_map_notify_event_t>(root, check));
    // A window manager puts a window into a frame window, which may be above the panels. When the window
    // manager ends, the server makes the window a child of the root window again. The window may be above the
    // panels then, too.
    subscriptions.push_back(connection.subscribe<xcb_reparent_notify_event_t>(root, check));
    subscriptions.push_back(connection.subscribe<xcb_circulate_notify_event_t>(root, check));
    subscriptions.push_back(connection.subscribe<xcb_destroy_notify_event_t>(
        root, [this](const auto& event) { forget(event.window); }));
    subscriptions.push_back(
        connection.subscribe<xcb_property_notify_event_t>(connection.ownWindow(), [this](const auto& event) {
            if (event.atom == this->connection.atoms()._MIRROLET_RESTACK)
                checkRequested();
        }));
}

PanelStack::~PanelStack() {
    subscriptions.clear();
    if (!panels.empty())
        connection.watchTopLevels(false);
}

void PanelStack::show(xcb_window_t panel, int level) {
    {
        const MutexLock lock(panelsMutex);
        if (panels.empty())
            connection.watchTopLevels(true);
        panels.show(panel, level);
    }
    requestCheck();
}

void PanelStack::hide(xcb_window_t panel) {
    const MutexLock lock(panelsMutex);
    if (panels.hide(panel) && panels.empty())
        connection.watchTopLevels(false);
}

void PanelStack::setLevel(xcb_window_t panel, int level) {
    {
        const MutexLock lock(panelsMutex);
        if (!panels.setLevel(panel, level))
            return;
    }
    requestCheck();
}

void PanelStack::setShadow(xcb_window_t panel, xcb_window_t shadow) {
    const MutexLock lock(panelsMutex);
    panels.setShadow(panel, shadow);
    if (shadow != XCB_WINDOW_NONE)
        carryOut({shadow, PanelOrder::Place::below, panel});
}

/// Changes a property of our own window, which makes the server send an event to this client. That event
/// arrives after all events that are already under way. A burst of events, as when the user switches the
/// workspace, therefore costs only one check.
void PanelStack::requestCheck() {
    const MutexLock lock(panelsMutex);
    if (panels.empty() || std::exchange(checkPending, true))
        return;
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_APPEND, connection.ownWindow(),
                        connection.atoms()._MIRROLET_RESTACK, XCB_ATOM_INTEGER, 32, 0, nullptr);
    connection.flush();
}

void PanelStack::configured(const xcb_configure_notify_event_t& event) {
    if (siblings.note(event.window, event.above_sibling))
        requestCheck();
}

void PanelStack::forget(xcb_window_t topLevel) {
    siblings.forget(topLevel);
    limit.forget(topLevel);
}

void PanelStack::checkRequested() {
    PanelOrder shown;
    {
        const MutexLock lock(panelsMutex);
        checkPending = false;
        shown = panels;
    }
    if (!shown.empty())
        return check(shown);
    siblings.clear();
    limit.clear();
}

void PanelStack::check(const PanelOrder& shown) {
    const auto order = stackingOrder(connection);
    const auto opponents = applicationWindows(connection, shown.windowsAbove(order));
    const auto opponent = limit.topmostAllowed(opponents, RaiseLimit::Clock::now());
    for (const auto& move : shown.moves(order, opponent))
        if (!carryOut(move))
            return requestCheck(); // A window of this move has been destroyed meanwhile.
    connection.flush();
}

/// Moves one window. Returns false if a panel could not be moved. Does not check whether a shadow was moved,
/// because a shadow that is gone needs no place.
bool PanelStack::carryOut(const PanelOrder::Move& move) {
    constexpr std::uint16_t mask = XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE;
    if (move.place == PanelOrder::Place::below) {
        const ExpectErrors gone(connection, siblingGone);
        const std::uint32_t values[] = {move.sibling, XCB_STACK_MODE_BELOW};
        xcb_configure_window(connection.xcb(), move.window, mask, values);
        return true;
    }
    siblings.note(move.window, move.sibling); // The event about this move then causes no check.
    const std::uint32_t values[] = {move.sibling, XCB_STACK_MODE_ABOVE};
    return connection.succeeds(xcb_configure_window_checked(connection.xcb(), move.window, mask, values),
                               siblingGone);
}

} // namespace mirrolet::platform::desktop::x11
