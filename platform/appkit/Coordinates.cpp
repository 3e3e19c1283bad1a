#include "platform/appkit/Coordinates.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace mirrolet::platform {

namespace {

/// Returns the main screen's bottom-left corner in Qt's coordinates.
QPointF mainBottomLeft() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen)
        return {0, 0};
    const QRect geometry = screen->geometry();
    return QPointF(geometry.x(), geometry.y() + geometry.height());
}

} // namespace

QPointF toQtScreen(NSPoint point) {
    const QPointF origin = mainBottomLeft();
    return {origin.x() + point.x, origin.y() - point.y};
}

NSPoint fromQtScreen(QPointF point) {
    const QPointF origin = mainBottomLeft();
    return {point.x() - origin.x(), origin.y() - point.y()};
}

QRect toQtScreenRect(const NSRect& rect) {
    // Position and size are rounded separately, so that a window that is only moved keeps its size.
    const QPoint topLeft = toQtScreen({rect.minX(), rect.maxY()}).toPoint();
    return {topLeft, QSizeF(rect.width(), rect.height()).toSize()};
}

NSRect fromQtScreenRect(const QRect& rect) {
    const NSPoint bottomLeft = fromQtScreen(QPointF(rect.x(), rect.y() + rect.height()));
    return {bottomLeft, {CGFloat(rect.width()), CGFloat(rect.height())}};
}

desktop::PixelSize toPixels(QSize size, double scale) {
    return {static_cast<int>(std::lround(size.width() * scale)),
            static_cast<int>(std::lround(size.height() * scale))};
}

desktop::PixelRect toPixels(const NSRect& inWindow, CGFloat windowHeight, double scale) {
    const double top = windowHeight - inWindow.maxY();
    const int left = static_cast<int>(std::lround(inWindow.minX() * scale));
    const int upper = static_cast<int>(std::lround(top * scale));
    const int right = static_cast<int>(std::lround(inWindow.maxX() * scale));
    const int lower = static_cast<int>(std::lround((top + inWindow.height()) * scale));
    return {left, upper, std::max(right - left, 1), std::max(lower - upper, 1)};
}

} // namespace mirrolet::platform
