#include "platform/appkit/NSScreen.h"

#include "platform/appkit/Coordinates.h"
#include "platform/desktop/Desktop.h"

#include <QGuiApplication>
#include <QScreen>

#include <cmath>

namespace mirrolet::platform {

namespace {

/// The screen without what docks reserve. Qt places a screen in device pixels and measures it in points.
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

/// The free area that Qt knows is the window manager's sum for all monitors, which Qt uses only where there
/// is one monitor.
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
