#include "platform/appkit/ViewNativeWindow.h"

#include "platform/appkit/ViewTree.h"

#include <QEnterEvent>
#include <QMouseEvent>
#include <QSurfaceFormat>

namespace mirrolet::platform {

ViewNativeWindow::ViewNativeWindow(ViewTree& shownTree, Owner& windowOwner)
    : tree(shownTree), owner(windowOwner) {
    QSurfaceFormat format;
    format.setAlphaBufferSize(8);
    setFormat(format);
    setSurfaceType(QSurface::RasterSurface);
}

bool ViewNativeWindow::event(QEvent* event) {
    if (event->type() == QEvent::Enter) {
        const auto* enter = static_cast<QEnterEvent*>(event);
        tree.pointerEntered(enter->position(), enter->globalPosition());
    } else if (event->type() == QEvent::Leave) {
        tree.pointerLeft();
    }
    return QWindow::event(event);
}

void ViewNativeWindow::exposeEvent(QExposeEvent* /*event*/) {
    owner.exposed();
}

void ViewNativeWindow::resizeEvent(QResizeEvent* /*event*/) {
    owner.resized();
}

void ViewNativeWindow::moveEvent(QMoveEvent* /*event*/) {
    owner.relocated();
}

void ViewNativeWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    owner.pressed();
    tree.mousePressed(event->position(), event->globalPosition());
}

void ViewNativeWindow::mouseMoveEvent(QMouseEvent* event) {
    tree.mouseMoved(event->position(), event->globalPosition(), event->buttons() & Qt::LeftButton);
}

void ViewNativeWindow::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    tree.mouseReleased(event->position(), event->globalPosition());
    owner.relocated();
}

} // namespace mirrolet::platform
