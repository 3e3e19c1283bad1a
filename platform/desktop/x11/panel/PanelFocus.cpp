#include "platform/desktop/x11/panel/PanelFocus.h"

#include "platform/desktop/x11/server/Property.h"

#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

/// Returns false for None and PointerRoot, which are modes and not windows.
bool isWindow(xcb_window_t focus) {
    return focus != XCB_INPUT_FOCUS_NONE && focus != XCB_INPUT_FOCUS_POINTER_ROOT;
}

} // namespace

PanelFocus::PanelFocus(X11Connection& connection, const PanelEvents& events, PreviousFocus& previousFocus,
                       xcb_window_t panel)
    : connection(connection), previousFocus(previousFocus), panel(panel) {
    subscriptions[0] =
        connection.subscribe<xcb_property_notify_event_t>(connection.ownWindow(), [this](const auto& event) {
            if (event.atom == this->connection.atoms()._MIRROLET_TIME)
                timeKnown(event.time);
        });
    subscriptions[1] = events.subscribe<xcb_map_notify_event_t>([this](const auto&) { mapped(); });
    subscriptions[2] = events.subscribe<xcb_visibility_notify_event_t>([this](const auto&) { mapped(); });
    subscriptions[3] = events.subscribe<xcb_unmap_notify_event_t>([this](const auto&) { unmapped(); });
    subscriptions[4] = events.subscribe<FocusOut>([this](const FocusOut& event) { focusLeft(event); });
}

PanelFocus::~PanelFocus() {
    for (auto& subscription : subscriptions)
        subscription = {};
    giveBack();
}

void PanelFocus::take() {
    const MutexLock lock(focusMutex);
    // The server is asked who has the focus, because the events do not always tell. If the focus goes from
    // the panel to no window and then to another window, this client gets no event for the second change.
    const bool lost = state == State::held && focused() != panel;
    if (state != State::without && !lost)
        return;
    state = State::awaitingTime;
    // The server's time is known only from events. An empty change of a property of our own window makes the
    // server send such an event.
    const auto& atoms = connection.atoms();
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_APPEND, connection.ownWindow(), atoms._MIRROLET_TIME,
                        XCB_ATOM_INTEGER, 32, 0, nullptr);
    connection.flush();
}

void PanelFocus::giveBack() {
    const MutexLock lock(focusMutex);
    if (std::exchange(state, State::without) == State::held)
        restore();
    previousFocus.end(panel);
}

void PanelFocus::timeKnown(xcb_timestamp_t time) {
    const MutexLock lock(focusMutex);
    if (state != State::awaitingTime)
        return;
    since = time;
    state = State::awaitingMap;
    rememberOwner();
    tryFocus();
}

void PanelFocus::mapped() {
    const MutexLock lock(focusMutex);
    if (state == State::awaitingMap)
        tryFocus();
}

void PanelFocus::unmapped() {
    // The focus is given back now, because a later giveBack() would be too late. As soon as no window has the
    // focus, a window manager itself chooses a window for the focus.
    const MutexLock lock(focusMutex);
    if (state != State::held)
        return;
    state = State::without;
    restore();
    previousFocus.end(panel);
}

void PanelFocus::focusLeft(const xcb_focus_out_event_t& event) {
    if (event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB)
        return; // A hot key's grab has the keyboard for a moment.
    if (event.detail == XCB_NOTIFY_DETAIL_INFERIOR || event.detail == XCB_NOTIFY_DETAIL_POINTER)
        return;
    const MutexLock lock(focusMutex);
    if (state != State::held || focusIsOurs())
        return;
    state = State::without;
    previousFocus.end(panel);
}

void PanelFocus::rememberOwner() {
    const auto focusCookie = xcb_get_input_focus(connection.xcb());
    const auto activeCookie =
        requestProperty(connection, connection.root(), connection.atoms()._NET_ACTIVE_WINDOW, 4);
    const auto focused = connection.reply<xcb_get_input_focus_reply>(focusCookie);
    const auto actives = takeProperty(connection, activeCookie).items(XCB_ATOM_WINDOW);
    owner = focused ? focused->focus : static_cast<xcb_window_t>(XCB_INPUT_FOCUS_POINTER_ROOT);
    ownerRevertTo = focused ? focused->revert_to : static_cast<std::uint8_t>(XCB_INPUT_FOCUS_POINTER_ROOT);
    active = actives.empty() ? static_cast<xcb_window_t>(XCB_WINDOW_NONE) : actives.front();
    xcb_window_t before = active;
    if (before == XCB_WINDOW_NONE)
        before = previousFocus.window(); // Another panel of this process has the focus.
    if (before == XCB_WINDOW_NONE && isWindow(owner))
        before = owner; // There is no window manager.
    previousFocus.begin(before, panel);
}

void PanelFocus::tryFocus() {
    if (!focus(panel, XCB_INPUT_FOCUS_POINTER_ROOT, since))
        return; // The panel is not viewable yet. The next map or visibility event tries again.
    state = State::held;
    if (focusIsOurs())
        return;
    state = State::without; // The user has chosen another window meanwhile.
    previousFocus.end(panel);
}

void PanelFocus::restore() {
    if (!focusIsOurs())
        return;
    // `since` is the time at which the panel asked for the focus. The server refuses this request if the
    // focus was moved after the panel got the focus.
    bool restored = focus(owner, ownerRevertTo, since);
    if (!restored && isWindow(active) && active != owner)
        restored = focus(active, XCB_INPUT_FOCUS_PARENT, since);
    if (!restored)
        focus(XCB_INPUT_FOCUS_POINTER_ROOT, XCB_INPUT_FOCUS_POINTER_ROOT, since);
}

bool PanelFocus::focus(xcb_window_t window, std::uint8_t revertTo, xcb_timestamp_t time) {
    // The server answers BadMatch if the window is not viewable.
    return connection.succeeds(xcb_set_input_focus_checked(connection.xcb(), revertTo, window, time),
                               windowGone | ErrorSet{XError::match});
}

std::optional<xcb_window_t> PanelFocus::focused() const {
    const auto reply = connection.reply<xcb_get_input_focus_reply>(xcb_get_input_focus(connection.xcb()));
    return reply ? std::optional(reply->focus) : std::nullopt;
}

bool PanelFocus::focusIsOurs() const {
    const auto window = focused();
    return window && (*window == panel || *window == connection.root() || !isWindow(*window));
}

} // namespace mirrolet::platform::desktop::x11
