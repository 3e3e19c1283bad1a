#include "platform/swiftui/RadioWidget.h"

#include "platform/swiftui/Theme.h"

#include <QFontMetrics>

#include <algorithm>

namespace mirrolet::platform::swiftui {
namespace {
constexpr int dotSide = 16;
constexpr int ringRoom = 2;
constexpr int labelGap = 6;
} // namespace

RadioWidget::RadioWidget(const QString& label) : QRadioButton(label) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
}

QSize RadioWidget::sizeHint() const {
    const QFontMetrics metrics(resolvedFont(Font::body));
    return {ringRoom * 2 + dotSide + labelGap + metrics.horizontalAdvance(text()) + 2,
            std::max(dotSide + 2 * ringRoom, metrics.height())};
}

void RadioWidget::focusInEvent(QFocusEvent* event) {
    focusVisibility.focusIn(*event);
    QRadioButton::focusInEvent(event);
}

void RadioWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const Theme theme(*this);
    const QRectF dot(ringRoom, (height() - dotSide) / 2.0, dotSide, dotSide);
    const QColor fill = isChecked() ? theme.accent : theme.controlFill;
    drawBox(painter, dot, dotSide / 2.0, isDown() ? mixed(fill, Qt::black, 0.14) : fill,
            isChecked() ? withAlpha(Qt::black, 0.12) : withAlpha(theme.label, 0.35));
    if (isChecked()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::white);
        painter.drawEllipse(dot.adjusted(5, 5, -5, -5));
    }
    if (focusVisibility.shows(*this))
        drawFocusRing(painter, dot.adjusted(-3, -3, 3, 3), dotSide / 2.0 + 3, withAlpha(theme.accent, 0.7));
    painter.setFont(resolvedFont(Font::body));
    painter.setPen(theme.label);
    const QRectF label = QRectF(rect()).adjusted(ringRoom * 2 + dotSide + labelGap - ringRoom, 0, 0, 0);
    painter.drawText(label, Qt::AlignLeft | Qt::AlignVCenter, text());
}

} // namespace mirrolet::platform::swiftui
