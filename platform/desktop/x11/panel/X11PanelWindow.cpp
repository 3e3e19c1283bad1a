#include "platform/desktop/x11/panel/X11PanelWindow.h"

#include "platform/desktop/x11/panel/ActivationRequest.h"
#include "platform/desktop/x11/panel/PanelStack.h"

namespace mirrolet::platform::desktop::x11 {

namespace {

constexpr int modalLevel = 8; // A panel at or above this level asks the user something.

} // namespace

X11PanelWindow::X11PanelWindow(X11Connection& connection, PanelStack& stack,
                               CompositingManager& compositingManager, PreviousFocus& previousFocus,
                               WindowNumber window, PanelStacking stacking)
    : connection(connection), stack(stack), window(window), stacking(stacking), events(connection, window),
      properties(connection, window, stacking), raise(connection, window),
      wmState(connection, events, window), focus(connection, events, previousFocus, window),
      corners(connection, compositingManager, window),
      shadow(connection, events, compositingManager, stack, window) {
    if (stacking != PanelStacking::floating)
        followWindowManager();
}

X11PanelWindow::~X11PanelWindow() {
    mapSubscription = {};
    propertySubscription = {};
    stack.hide(window);
}

/// Arranges that PanelProperties::requestAfterMap() is called after every map, because a window manager
/// forgets the requests at every unmap. The function is also called when a new window manager starts, because
/// that one has never received the requests.
void X11PanelWindow::followWindowManager() {
    connection.selectOnRoot(XCB_EVENT_MASK_PROPERTY_CHANGE);
    mapSubscription =
        events.subscribe<xcb_map_notify_event_t>([this](const auto&) { properties.requestAfterMap(); });
    propertySubscription =
        connection.subscribe<xcb_property_notify_event_t>(connection.root(), [this](const auto& event) {
            if (event.atom == connection.atoms()._NET_SUPPORTING_WM_CHECK && shown)
                properties.requestAfterMap();
        });
}

void X11PanelWindow::willShow() {
    if (stacking != PanelStacking::floating)
        wmState.awaitWithdrawn();
    shown = true;
    properties.writeBeforeMap(level >= modalLevel);
}

void X11PanelWindow::didShow() {
    if (stacking == PanelStacking::floating)
        return stack.show(window, level);
    properties.requestAfterMap();
    if (stacking == PanelStacking::amongNormal)
        raise.send();
}

void X11PanelWindow::willHide() {
    if (stacking != PanelStacking::floating)
        wmState.awaitMapped();
}

void X11PanelWindow::didHide() {
    shown = false;
    stack.hide(window);
    returnFocus();
}

void X11PanelWindow::takeFocus() {
    if (stacking == PanelStacking::dialog)
        requestActivation(connection, window);
    else
        focus.take();
}

void X11PanelWindow::returnFocus() {
    if (stacking != PanelStacking::dialog) // The window manager gives a dialog's focus back.
        focus.giveBack();
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
