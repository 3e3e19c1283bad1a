#include "platform/swiftui/MenuWidget.h"

#include "platform/swiftui/Theme.h"

#include <QFontMetrics>
#include <QWheelEvent>

#include <algorithm>

namespace mirrolet::platform::swiftui {
namespace {

constexpr double menuCornerRadius = 6;
constexpr int textInset = 10;
constexpr int arrowRoom = 22;

void drawChevron(QPainter& painter, QPointF tip, double upwards) {
    const double reach = 3;
    painter.drawPolyline(
        QPolygonF{tip + QPointF(-reach, reach * upwards), tip, tip + QPointF(reach, reach * upwards)});
}

} // namespace

MenuWidget::MenuWidget() {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
}

QSize MenuWidget::sizeHint() const {
    const QFontMetrics metrics(resolvedFont(Font::body));
    int widest = 0;
    for (int index = 0; index < count(); ++index)
        widest = std::max(widest, metrics.horizontalAdvance(itemText(index)));
    return {textInset + widest + arrowRoom + 4, std::max(24, metrics.height() + 6)};
}

void MenuWidget::focusInEvent(QFocusEvent* event) {
    focusVisibility.focusIn(*event);
    QComboBox::focusInEvent(event);
}

void MenuWidget::wheelEvent(QWheelEvent* event) {
    // The wheel is meant to scroll the form. It must not change a menu that happens to lie under the pointer.
    event->ignore();
}

void MenuWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const Theme theme(*this);
    const QColor fill =
        underMouse() ? mixed(theme.controlFill, theme.dark ? Qt::white : Qt::black, 0.05) : theme.controlFill;
    drawBox(painter, rect(), menuCornerRadius, fill, theme.controlBorder);
    if (focusVisibility.shows(*this))
        drawFocusRing(painter, rect(), menuCornerRadius, theme.accent);
    painter.setFont(resolvedFont(Font::body));
    painter.setPen(theme.label);
    painter.drawText(rect().adjusted(textInset, 0, -arrowRoom, 0), Qt::AlignLeft | Qt::AlignVCenter,
                     currentText());
    painter.setPen(QPen(theme.secondaryLabel, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF centre(width() - arrowRoom / 2.0, height() / 2.0);
    drawChevron(painter, centre - QPointF(0, 5.5), 1);
    drawChevron(painter, centre + QPointF(0, 5.5), -1);
}

} // namespace mirrolet::platform::swiftui
