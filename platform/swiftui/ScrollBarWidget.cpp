#include "platform/swiftui/ScrollBarWidget.h"

#include "platform/swiftui/Theme.h"

#include <QStyle>
#include <QStyleOptionSlider>

namespace mirrolet::platform::swiftui {

ScrollBarWidget::ScrollBarWidget() : QScrollBar(Qt::Vertical) {
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    setAttribute(Qt::WA_Hover);
}

void ScrollBarWidget::paintEvent(QPaintEvent* /*event*/) {
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRectF slider =
        style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
    const double thick = underMouse() || isSliderDown() ? 8 : 6;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withAlpha(Theme(*this).label, isSliderDown() ? 0.5 : 0.3));
    const QRectF thumb(slider.center().x() - thick / 2, slider.top() + 2, thick, slider.height() - 4);
    painter.drawRoundedRect(thumb, thick / 2, thick / 2);
}

} // namespace mirrolet::platform::swiftui
