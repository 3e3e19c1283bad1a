#include "platform/appkit/WindowHost.h"

#include "platform/appkit/NSWindow.h"
#include "platform/appkit/ViewTree.h"
#include "platform/appkit/ViewWindowHost.h"
#include "platform/appkit/WidgetWindowHost.h"

namespace mirrolet::platform {

std::unique_ptr<WindowHost> WindowHost::make(NSWindow& window) {
    if (window.contentView() && window.contentView()->hostedWidget())
        return std::make_unique<WidgetWindowHost>(window);
    return std::make_unique<ViewWindowHost>(window);
}

void WindowHost::moved(const QRect& geometry) {
    owner.hostMoved(fromQtScreenRect(geometry));
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
