#include "platform/appkit/NSScreen.h"

#include "platform/appkit/ViewTree.h"
#include "platform/appkit/WindowHost.h"
#include "platform/desktop/Desktop.h"

#include <QGuiApplication>
#include <QScreen>

#include <cmath>

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

/// The toolkit places a screen in device pixels and measures it in points.
QRect withoutReserved(const QScreen& screen) {
    const double scale = screen.devicePixelRatio();
    const auto toPixels = [scale](int length) { return static_cast<int>(std::lround(length * scale)); };
    const auto toPoints = [scale](int length) { return static_cast<int>(std::ceil(length / scale)); };
    const QRect whole = screen.geometry();
    const auto edges = desktop::Desktop::current().workArea().reserved(
        {whole.x(), whole.y(), toPixels(whole.width()), toPixels(whole.height())});
    return whole.adjusted(toPoints(edges.left), toPoints(edges.top), -toPoints(edges.right),
                          -toPoints(edges.bottom));
}

/// What the toolkit knows is the window manager's sum for all monitors, and it takes that for one only.
QRect visiblePart(const QScreen& screen) {
    const QRect free = withoutReserved(screen);
    const QRect both = free & screen.availableGeometry();
    return both.isEmpty() ? screen.geometry() : both;
}

} // namespace

std::optional<NSScreen> NSScreen::main() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen || screen->geometry().isEmpty())
        return std::nullopt;
    return NSScreen{fromQtScreenRect(screen->geometry()), fromQtScreenRect(visiblePart(*screen))};
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
