#include "platform/appkit/WindowHost.h"

#include "platform/appkit/Coordinates.h"
#include "platform/appkit/NSScreen.h"
#include "platform/appkit/NSView.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace mirrolet::platform {

namespace {

/// If less than this width or height of a window is on a screen, the user can hardly grasp the window. In
/// points.
constexpr int graspable = 16;

bool isOnScreen(const QRect& window) {
    const auto screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(), [&](const QScreen* screen) {
        const QRect part = screen->geometry() & window;
        return part.width() >= std::min(graspable, window.width()) &&
               part.height() >= std::min(graspable, window.height());
    });
}

QRect movedInto(const QRect& room, QRect window) {
    window.moveLeft(
        std::max(room.left(), std::min(window.left(), room.left() + room.width() - window.width())));
    window.moveTop(
        std::max(room.top(), std::min(window.top(), room.top() + room.height() - window.height())));
    return window;
}

desktop::PanelShadow shadowAt(double scale) {
    constexpr desktop::PanelShadow inPoints{0.25, 18, 6};
    return {inPoints.opacity, inPoints.blur * scale, inPoints.offset * scale};
}

} // namespace

WindowHost::WindowHost(HostedWindow& window) : owner(window), screens([this] { screensChanged(); }) {}

/// Called when the screens have changed. Reports the window's position again, because the origin of screen
/// coordinates may have moved. If too little of the window is left on any screen, moves the window onto the
/// main screen.
void WindowHost::screensChanged() {
    const auto main = NSScreen::main();
    if (!main)
        return;
    const QRect before = geometry();
    const QRect after = isOnScreen(before) ? before : movedInto(toQtScreenRect(main->visibleFrame), before);
    moved(after);
    if (after != before)
        setGeometry(after);
}

void WindowHost::moved(const QRect& geometry) {
    owner.hostMoved(fromQtScreenRect(geometry));
}

void WindowHost::openPanel(desktop::WindowNumber number, desktop::PanelStacking stacking) {
    panel.open(number, stacking, owner.level(),
               owner.look().hasShadow ? shadowAt(scale()) : desktop::PanelShadow{});
}

void WindowHost::cutCorners() {
    const auto& content = owner.contentView();
    panel.setCorners(toPixels(geometry().size(), scale()),
                     content ? content->layer().cornerRadius * scale() : 0);
}

void WindowHost::awaitQt() {
    // QCursor::pos() waits for a reply, and the server replies only after it has processed Qt's earlier
    // requests. Any other request with a reply would do too.
    (void)QCursor::pos();
}

} // namespace mirrolet::platform
