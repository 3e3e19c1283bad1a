#include "platform/desktop/x11/panel/PanelFocus.h"

#include "platform/desktop/x11/server/XcbReply.h"

#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

template <typename Event> const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

/// None and PointerRoot are no windows.
bool isWindow(xcb_window_t focus) {
    return focus != XCB_INPUT_FOCUS_NONE && focus != XCB_INPUT_FOCUS_POINTER_ROOT;
}

} // namespace

PanelFocus::PanelFocus(X11Connection& connection, PreviousFocus& loan, xcb_window_t panel)
    : connection(connection), loan(loan), panel(panel) {
    subscriptions[0] = connection.subscribe(XCB_PROPERTY_NOTIFY, [this](const xcb_generic_event_t& event) {
        const auto& notify = as<xcb_property_notify_event_t>(event);
        if (notify.window == this->connection.ownWindow() &&
            notify.atom == this->connection.atoms()._MIRROLET_TIME)
            timeKnown(notify.time);
    });
    subscriptions[1] = connection.subscribe(XCB_MAP_NOTIFY, [this](const xcb_generic_event_t& event) {
        if (as<xcb_map_notify_event_t>(event).window == this->panel)
            mapped();
    });
    subscriptions[2] = connection.subscribe(XCB_VISIBILITY_NOTIFY, [this](const xcb_generic_event_t& event) {
        if (as<xcb_visibility_notify_event_t>(event).window == this->panel)
            mapped();
    });
    subscriptions[3] = connection.subscribe(XCB_UNMAP_NOTIFY, [this](const xcb_generic_event_t& event) {
        if (as<xcb_unmap_notify_event_t>(event).window == this->panel)
            unmapped();
    });
    subscriptions[4] = connection.subscribe(XCB_FOCUS_OUT, [this](const xcb_generic_event_t& event) {
        if (as<xcb_focus_out_event_t>(event).event == this->panel)
            focusLeft(as<xcb_focus_out_event_t>(event));
    });
}

PanelFocus::~PanelFocus() {
    for (auto& subscription : subscriptions)
        subscription = {};
    giveBack();
}

void PanelFocus::take() {
    const std::lock_guard guard(lock);
    if (state != State::without)
        return;
    state = State::awaitingTime;
    // Only an event tells the server's time: an empty change of a property of ours makes one.
    const auto& atoms = connection.atoms();
    xcb_change_property(connection.xcb(), XCB_PROP_MODE_APPEND, connection.ownWindow(), atoms._MIRROLET_TIME,
                        XCB_ATOM_INTEGER, 32, 0, nullptr);
    connection.flush();
}

void PanelFocus::giveBack() {
    const std::lock_guard guard(lock);
    if (std::exchange(state, State::without) == State::held)
        restore();
    loan.end(panel);
}

void PanelFocus::timeKnown(xcb_timestamp_t time) {
    const std::lock_guard guard(lock);
    if (state != State::awaitingTime)
        return;
    since = time;
    state = State::awaitingMap;
    rememberOwner();
    tryFocus();
}

void PanelFocus::mapped() {
    const std::lock_guard guard(lock);
    if (state == State::awaitingMap)
        tryFocus();
}

void PanelFocus::unmapped() {
    // Not left to the caller's giveBack(): a window manager that sees the focus fall to nobody picks a window
    // itself.
    const std::lock_guard guard(lock);
    if (state != State::held)
        return;
    state = State::without;
    restore();
    loan.end(panel);
}

void PanelFocus::focusLeft(const xcb_focus_out_event_t& event) {
    if (event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB)
        return; // A hot key's grab borrows the keyboard from us for a moment.
    if (event.detail == XCB_NOTIFY_DETAIL_INFERIOR || event.detail == XCB_NOTIFY_DETAIL_POINTER)
        return;
    const std::lock_guard guard(lock);
    if (state != State::held || focusIsOurs())
        return;
    state = State::without;
    loan.end(panel);
}

void PanelFocus::rememberOwner() {
    const auto focusCookie = xcb_get_input_focus(connection.xcb());
    const auto activeCookie = xcb_get_property(connection.xcb(), 0, connection.root(),
                                               connection.atoms()._NET_ACTIVE_WINDOW, XCB_ATOM_WINDOW, 0, 1);
    const XcbReply<xcb_get_input_focus_reply_t> focused(
        xcb_get_input_focus_reply(connection.xcb(), focusCookie, nullptr));
    const XcbReply<xcb_get_property_reply_t> property(
        xcb_get_property_reply(connection.xcb(), activeCookie, nullptr));
    owner = focused ? focused->focus : static_cast<xcb_window_t>(XCB_INPUT_FOCUS_POINTER_ROOT);
    ownerRevertTo = focused ? focused->revert_to : static_cast<std::uint8_t>(XCB_INPUT_FOCUS_POINTER_ROOT);
    active = property && property->format == 32 && xcb_get_property_value_length(property.get()) == 4
                 ? *static_cast<const xcb_window_t*>(xcb_get_property_value(property.get()))
                 : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    xcb_window_t lender = active;
    if (lender == XCB_WINDOW_NONE)
        lender = loan.window(); // It was borrowed already, by another panel of ours.
    if (lender == XCB_WINDOW_NONE && isWindow(owner))
        lender = owner; // No window manager.
    loan.begin(lender, panel);
}

void PanelFocus::tryFocus() {
    if (!focus(panel, XCB_INPUT_FOCUS_POINTER_ROOT, since))
        return; // Not viewable yet: the next map or visibility event comes here again.
    state = State::held;
    if (focusIsOurs())
        return;
    state = State::without; // The user chose another window in the meantime, and keeps it.
    loan.end(panel);
}

void PanelFocus::restore() {
    if (!focusIsOurs())
        return;
    // With the time of our own taking: refused by the server if anyone has moved the focus since then.
    bool restored = focus(owner, ownerRevertTo, since);
    if (!restored && isWindow(active) && active != owner)
        restored = focus(active, XCB_INPUT_FOCUS_PARENT, since);
    if (!restored)
        focus(XCB_INPUT_FOCUS_POINTER_ROOT, XCB_INPUT_FOCUS_POINTER_ROOT, since);
}

bool PanelFocus::focus(xcb_window_t window, std::uint8_t revertTo, xcb_timestamp_t time) {
    return connection.succeeds(xcb_set_input_focus_checked(connection.xcb(), revertTo, window, time));
}

bool PanelFocus::focusIsOurs() const {
    const XcbReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection.xcb(), xcb_get_input_focus(connection.xcb()), nullptr));
    return reply && (reply->focus == panel || reply->focus == connection.root() || !isWindow(reply->focus));
}

} // namespace mirrolet::platform::desktop::x11
