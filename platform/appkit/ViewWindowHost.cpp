#include "platform/appkit/ViewWindowHost.h"

#include "platform/appkit/Coordinates.h"
#include "platform/appkit/NSWindowLevel.h"

#include <cmath>
#include <cstdint>
#include <utility>

namespace mirrolet::platform {

namespace {

desktop::PanelStacking stackingOf(int level) {
    return level > NSWindowLevel::normal ? desktop::PanelStacking::floating
                                         : desktop::PanelStacking::amongNormal;
}

/// Returns the flags for a native window. A floating window bypasses the window manager, because many window
/// managers keep their windows below the full-screen windows of other programs.
Qt::WindowFlags windowFlags(desktop::PanelStacking stacking) {
    const Qt::WindowFlags flags = Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus;
    return stacking == desktop::PanelStacking::floating ? flags | Qt::BypassWindowManagerHint : flags;
}

std::uint32_t toArgb(const NSColor& colour) {
    const auto part = [](double value, int shift) {
        return static_cast<std::uint32_t>(std::lround(value * 255)) << shift;
    };
    return part(1, 24) | part(colour.red, 16) | part(colour.green, 8) | part(colour.blue, 0);
}

} // namespace

ViewWindowHost::ViewWindowHost(HostedWindow& hosted)
    : WindowHost(hosted), tree(*this), window(tree, *this), surface(window, tree),
      stacking(stackingOf(hosted.level())) {
    tree.setRoot(hosted.contentView());
    window.setTitle(QString::fromStdString(hosted.title()));
    window.setGeometry(toQtScreenRect(hosted.frame()));
}

ViewWindowHost::~ViewWindowHost() {
    destroyNative();
}

void ViewWindowHost::createNative() {
    if (window.handle())
        return;
    window.setFlags(windowFlags(stacking));
    window.setProperty("_q_showWithoutActivating", true);
    window.create();
    awaitQt();
    openPanel(static_cast<desktop::WindowNumber>(window.winId()), stacking);
    const NSColor behindAll = owner.look().backgroundColor;
    surface.open(toArgb(tree.root() ? tree.root()->layer().backgroundColor.value_or(behindAll) : behindAll));
}

void ViewWindowHost::destroyNative() {
    surface.close();
    panel.close();
    window.destroy();
}

void ViewWindowHost::setGeometry(const QRect& geometry) {
    placement = Placement::settled;
    window.setGeometry(geometry);
    // The shape is set here, because resized() sets it only after the server has reported the new size. Until
    // then a window that has grown would keep its old shape and take no clicks in its new part.
    cutCorners();
    surface.schedule();
}

void ViewWindowHost::setTitle(const std::string& title) {
    window.setTitle(QString::fromStdString(title));
}

void ViewWindowHost::setLevel(int level) {
    const auto wanted = stackingOf(level);
    if (wanted == std::exchange(stacking, wanted)) {
        panel.setLevel(level);
        return;
    }
    // The window manager manages windows at the normal level, but not floating windows. A shown window that
    // changes between the two confuses window managers, so a new native window is made.
    if (!window.handle())
        return;
    const bool visible = window.isVisible();
    destroyNative();
    tree.pressLost();
    if (visible)
        show();
}

void ViewWindowHost::show() {
    createNative();
    if (window.isVisible()) {
        panel.raise();
        return;
    }
    shownAt = toQtScreenRect(owner.frame());
    placement = Placement::requested;
    window.setGeometry(shownAt);
    cutCorners();
    awaitQt();
    panel.willShow();
    window.setVisible(true);
}

void ViewWindowHost::hide() {
    if (!window.isVisible())
        return;
    awaitQt();
    panel.willHide();
    window.setVisible(false);
    panel.didHide();
    // A hidden window is not told when the mouse button is released, so a press ends here.
    tree.pressLost();
    tree.pointerLeft();
}

void ViewWindowHost::takeFocus() {
    panel.takeFocus();
}

double ViewWindowHost::scale() const {
    return window.devicePixelRatio();
}

QRect ViewWindowHost::geometry() const {
    return window.geometry();
}

bool ViewWindowHost::isVisible() const {
    return window.isVisible();
}

void ViewWindowHost::contentChanged() {
    surface.contentChanged();
}

void ViewWindowHost::pictureChanged() {
    surface.pictureChanged();
}

void ViewWindowHost::setCursor(NSCursor cursor) {
    if (cursor == NSCursor::crosshair)
        window.setCursor(Qt::CrossCursor);
    else
        window.unsetCursor();
}

void ViewWindowHost::exposed() {
    if (!window.isExposed()) {
        surface.leavePicture();
        return;
    }
    if (!panel.isOpen())
        return;
    if (panel.shown() && placement == Placement::requested)
        settle();
    surface.draw();
    surface.repair();
}

/// Moves the window back to where it was requested, because the window manager i3 moves a window by a title
/// bar's height each time that the window is shown.
void ViewWindowHost::settle() {
    if (stacking != desktop::PanelStacking::amongNormal)
        return;
    placement = window.geometry() == shownAt ? Placement::settled : Placement::restored;
    window.setGeometry(shownAt);
}

void ViewWindowHost::resized() {
    relocated();
    cutCorners();
    surface.draw();
}

/// Reports the position that the window manager has given to the window. The position of a floating window is
/// not reported, because only this program moves the window. During a drag the server's reports are late, so
/// the position is reported when the drag ends. A window that the window manager moves while it shows it
/// keeps its place, also if it is hidden before it is back there.
void ViewWindowHost::relocated() {
    if (placement == Placement::restored && window.geometry() == shownAt)
        placement = Placement::settled;
    if (placement == Placement::settled && !tree.isPressed() &&
        stacking == desktop::PanelStacking::amongNormal)
        moved(window.geometry());
}

/// The user drags the window from where it is, even if the window manager has refused to move it back.
void ViewWindowHost::pressed() {
    if (std::exchange(placement, Placement::settled) != Placement::settled)
        relocated();
}

} // namespace mirrolet::platform
