#include "platform/desktop/x11/panel/X11PanelWindow.h"

#include "platform/desktop/x11/panel/PanelStack.h"

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr int modalLevel = 8; // A panel at or above it asks something.

void selectEvents(const X11Connection& connection, xcb_window_t window, std::uint32_t mask) {
    xcb_change_window_attributes(connection.xcb(), window, XCB_CW_EVENT_MASK, &mask);
    connection.flush();
}

} // namespace

X11PanelWindow::X11PanelWindow(X11Connection& connection, PanelStack& stack,
                               CompositingManager& compositingManager, PreviousFocus& loan,
                               WindowNumber window, PanelStacking stacking)
    : connection(connection), stack(stack), window(window), stacking(stacking),
      properties(connection, window, stacking), managerTurn(connection, window),
      keyboard(connection, loan, window), corners(connection, compositingManager, window),
      shadow(connection, compositingManager, stack, window) {
    if (stacking == PanelStacking::amongNormal)
        followWindowManager();
    selectEvents(connection, window,
                 XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_FOCUS_CHANGE |
                     XCB_EVENT_MASK_VISIBILITY_CHANGE | XCB_EVENT_MASK_PROPERTY_CHANGE);
}

X11PanelWindow::~X11PanelWindow() {
    mapSubscription = {};
    propertySubscription = {};
    stack.hide(window);
    selectEvents(connection, window, XCB_EVENT_MASK_NO_EVENT);
}

/// A window manager forgets the requests with every unmap, and another one that takes over never heard them.
void X11PanelWindow::followWindowManager() {
    connection.selectOnRoot(XCB_EVENT_MASK_PROPERTY_CHANGE);
    mapSubscription = connection.subscribe(XCB_MAP_NOTIFY, [this](const xcb_generic_event_t& event) {
        if (reinterpret_cast<const xcb_map_notify_event_t&>(event).event == window)
            properties.requestAfterMap();
    });
    propertySubscription =
        connection.subscribe(XCB_PROPERTY_NOTIFY, [this](const xcb_generic_event_t& event) {
            const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            if (notify.window == connection.root() &&
                notify.atom == connection.atoms()._NET_SUPPORTING_WM_CHECK && shown)
                properties.requestAfterMap();
        });
}

void X11PanelWindow::willShow() {
    if (stacking == PanelStacking::amongNormal)
        managerTurn.awaitWithdrawn();
    shown = true;
    properties.writeBeforeMap(level >= modalLevel);
}

void X11PanelWindow::didShow() {
    if (stacking == PanelStacking::floating)
        stack.show(window, level);
    else
        properties.requestAfterMap();
}

void X11PanelWindow::willHide() {
    if (stacking == PanelStacking::amongNormal)
        managerTurn.awaitMapped();
}

void X11PanelWindow::didHide() {
    shown = false;
    stack.hide(window);
    keyboard.giveBack();
}

void X11PanelWindow::setLevel(int newLevel) {
    level = newLevel;
    stack.setLevel(window, level);
}

void X11PanelWindow::setCorners(PixelSize size, double radius) {
    corners.set(size, radius);
    shadow.setRadius(radius);
}

void X11PanelWindow::setShadow(const PanelShadow& newShadow) {
    if (stacking == PanelStacking::floating)
        shadow.set(newShadow);
}

} // namespace mirrolet::platform::desktop::x11
