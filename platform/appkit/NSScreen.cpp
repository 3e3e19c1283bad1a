#include "platform/appkit/NSScreen.h"

#include "platform/appkit/ViewTree.h"
#include "platform/appkit/WindowHost.h"

#include <QGuiApplication>
#include <QScreen>

namespace mirrolet::platform {

namespace {

/// In the toolkit's coordinates.
QPointF mainBottomLeft() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen)
        return {0, 0};
    const QRect geometry = screen->geometry();
    return QPointF(geometry.x(), geometry.y() + geometry.height());
}

} // namespace

std::optional<NSScreen> NSScreen::main() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen || screen->geometry().isEmpty())
        return std::nullopt;
    return NSScreen{fromQtScreenRect(screen->geometry()), fromQtScreenRect(screen->availableGeometry())};
}

QPointF toQtScreen(NSPoint point) {
    const QPointF origin = mainBottomLeft();
    return {origin.x() + point.x, origin.y() - point.y};
}

NSPoint fromQtScreen(QPointF point) {
    const QPointF origin = mainBottomLeft();
    return {point.x() - origin.x(), origin.y() - point.y()};
}

} // namespace mirrolet::platform
