#include "platform/appkit/NSScreen.h"

#include "platform/appkit/Coordinates.h"
#include "platform/desktop/Desktop.h"

#include <QGuiApplication>
#include <QScreen>

#include <cmath>

namespace mirrolet::platform {

namespace {

/// Returns the screen's rectangle without the space that docks reserve. Qt gives a screen's position in
/// device pixels and its size in points.
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

/// Returns the part of the screen that neither docks nor the window manager reserve. Qt's answer alone does
/// not suffice, because the window manager names one free area for all monitors together, and Qt ignores that
/// area if there are several monitors.
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

} // namespace mirrolet::platform
