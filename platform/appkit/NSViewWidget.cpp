#include "platform/appkit/NSViewWidget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <utility>

namespace mirrolet::platform {

NSViewWidget::NSViewWidget(std::shared_ptr<NSView> root, QWidget* parent)
    : QWidget(parent), view(std::move(root)), tree(*this) {
    tree.setRoot(view);
    setMouseTracking(true);
    if (view->acceptsFirstResponder())
        setFocusPolicy(Qt::StrongFocus);
}

QSize NSViewWidget::sizeHint() const {
    const auto size = view->intrinsicContentSize();
    return size ? QSizeF(size->width, size->height).toSize() : QWidget::sizeHint();
}

void NSViewWidget::setCursor(NSCursor cursor) {
    if (cursor == NSCursor::crosshair)
        QWidget::setCursor(Qt::CrossCursor);
    else
        unsetCursor();
}

/// Gives every key to the first responder if there is one, even Tab and the window's shortcut keys.
bool NSViewWidget::event(QEvent* event) {
    const bool hasResponder = tree.hasFirstResponder();
    if (event->type() == QEvent::ShortcutOverride && hasResponder) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::KeyPress && hasResponder &&
        tree.keyPressed(static_cast<QKeyEvent&>(*event))) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void NSViewWidget::firstResponderChanged(bool exists) {
    if (!exists) {
        qApp->removeEventFilter(this);
        return;
    }
    setFocus();
    qApp->installEventFilter(this);
}

bool NSViewWidget::eventFilter(QObject* watched, QEvent* event) {
    const auto* pressed =
        event->type() == QEvent::MouseButtonPress ? qobject_cast<QWidget*>(watched) : nullptr;
    if (pressed && pressed != this && pressed->window() == window())
        tree.resignFirstResponder();
    return QWidget::eventFilter(watched, event);
}

void NSViewWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    tree.paint(painter);
}

void NSViewWidget::resizeEvent(QResizeEvent* /*event*/) {
    view->setFrame({{0, 0}, {CGFloat(width()), CGFloat(height())}});
}

void NSViewWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        tree.mousePressed(event->position(), event->globalPosition());
}

void NSViewWidget::mouseMoveEvent(QMouseEvent* event) {
    tree.mouseMoved(event->position(), event->globalPosition(), event->buttons() & Qt::LeftButton);
}

void NSViewWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        tree.mouseReleased(event->position(), event->globalPosition());
}

void NSViewWidget::leaveEvent(QEvent* /*event*/) {
    tree.pointerLeft();
}

void NSViewWidget::keyPressEvent(QKeyEvent* event) {
    // Space and Return on a focused control count as a click on the control's middle. Holding the key down
    // counts as one click.
    const bool press = event->key() == Qt::Key_Space || event->key() == Qt::Key_Return;
    if (!press || event->modifiers() != Qt::NoModifier || event->isAutoRepeat()) {
        QWidget::keyPressEvent(event);
        return;
    }
    const QPointF middle = QRectF(rect()).center();
    tree.mousePressed(middle, mapToGlobal(middle));
    tree.mouseReleased(middle, mapToGlobal(middle));
}

void NSViewWidget::focusOutEvent(QFocusEvent* event) {
    tree.resignFirstResponder();
    QWidget::focusOutEvent(event);
}

} // namespace mirrolet::platform
