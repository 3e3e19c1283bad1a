#include "platform/swiftui/ButtonWidget.h"

#include "platform/swiftui/Theme.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace mirrolet::platform::swiftui {
namespace {

constexpr double cornerRadius = 7;

/// Returns the font of a button's label. The label of a prominent button is bolder than others.
QFont labelFont(ButtonStyle style) {
    QFont font = resolvedFont(Font::body);
    if (style == ButtonStyle::borderedProminent)
        font.setWeight(QFont::DemiBold);
    return font;
}

} // namespace

ButtonWidget::ButtonWidget(const QString& label, ButtonStyle style) : QPushButton(label), look(style) {
    setAutoDefault(false);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize ButtonWidget::sizeHint() const {
    const QFontMetrics metrics(labelFont(look));
    return {std::max(96, metrics.horizontalAdvance(text()) + 32), std::max(28, metrics.height() + 10)};
}

void ButtonWidget::focusInEvent(QFocusEvent* event) {
    focusVisibility.focusIn(*event);
    QPushButton::focusInEvent(event);
}

void ButtonWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const Theme theme(*this);
    const bool prominent = look == ButtonStyle::borderedProminent;
    QColor fill = prominent ? theme.accent : theme.controlFill;
    if (isDown())
        fill = mixed(fill, theme.dark && !prominent ? Qt::white : Qt::black, 0.16);
    else if (underMouse())
        fill = mixed(fill, theme.dark || prominent ? Qt::white : Qt::black, 0.06);
    drawBox(painter, rect(), cornerRadius, fill,
            prominent ? withAlpha(Qt::black, 0.12) : theme.controlBorder);
    if (focusVisibility.shows(*this)) {
        drawFocusRing(painter, rect(), cornerRadius, theme.accent);
        if (prominent)
            drawFocusRing(painter, QRectF(rect()).adjusted(2, 2, -2, -2), cornerRadius - 2, Qt::white);
    }
    painter.setFont(labelFont(look));
    painter.setPen(prominent ? QColor(Qt::white) : theme.label);
    painter.drawText(rect(), Qt::AlignCenter, text());
}

} // namespace mirrolet::platform::swiftui
