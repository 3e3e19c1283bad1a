#include "platform/appkit/WindowHost.h"

#include "platform/appkit/NSScreen.h"
#include "platform/appkit/NSWindow.h"
#include "platform/appkit/ViewTree.h"
#include "platform/appkit/ViewWindowHost.h"
#include "platform/appkit/WidgetWindowHost.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace mirrolet::platform {

namespace {

/// A window of which less than this is left on the screens, in either direction, cannot be grasped any more.
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

} // namespace

WindowHost::WindowHost(NSWindow& window) : owner(window) {
    watchScreens();
}

void WindowHost::watchScreens() {
    // A change of monitors comes as a burst; it is looked at once, when it is over.
    const auto later = [this] {
        if (!std::exchange(screensDirty, true))
            QTimer::singleShot(0, &screenWatch, [this] { screensChanged(); });
    };
    const auto watch = [this, later](QScreen* screen) {
        QObject::connect(screen, &QScreen::geometryChanged, &screenWatch, later);
    };
    for (QScreen* screen : QGuiApplication::screens())
        watch(screen);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &screenWatch, [watch, later](QScreen* screen) {
        watch(screen);
        later();
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &screenWatch, later);
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &screenWatch, later);
}

/// The origin of screen coordinates may have moved, and the screen under the window may be gone: then it
/// comes back onto the main one. A window that the user has pushed partly off the screens stays where it is.
void WindowHost::screensChanged() {
    screensDirty = false;
    const auto main = NSScreen::main();
    if (!main)
        return;
    const QRect before = geometry();
    const QRect after = isOnScreen(before) ? before : movedInto(toQtScreenRect(main->visibleFrame), before);
    moved(after);
    if (after != before)
        setGeometry(after);
}

std::unique_ptr<WindowHost> WindowHost::make(NSWindow& window) {
    if (window.contentView() && window.contentView()->hostedWidget())
        return std::make_unique<WidgetWindowHost>(window);
    return std::make_unique<ViewWindowHost>(window);
}

void WindowHost::moved(const QRect& geometry) {
    owner.hostMoved(fromQtScreenRect(geometry));
}

desktop::PanelShadow WindowHost::shadow(double scale) const {
    constexpr desktop::PanelShadow inPoints{0.25, 18, 6};
    if (!owner.hasShadow)
        return {};
    return {inPoints.opacity, inPoints.blur * scale, inPoints.offset * scale};
}

void WindowHost::awaitToolkit() {
    (void)QCursor::pos(); // Any question that is answered.
}

QRect toQtScreenRect(const NSRect& rect) {
    // Place and size are rounded apart: a window that is only moved keeps its size.
    const QPoint topLeft = toQtScreen({rect.minX(), rect.maxY()}).toPoint();
    return {topLeft, QSizeF(rect.width(), rect.height()).toSize()};
}

NSRect fromQtScreenRect(const QRect& rect) {
    const NSPoint bottomLeft = fromQtScreen(QPointF(rect.x(), rect.y() + rect.height()));
    return {bottomLeft, {CGFloat(rect.width()), CGFloat(rect.height())}};
}

} // namespace mirrolet::platform
