#include "platform/swiftui/MaterialWidget.h"

#include "platform/swiftui/Theme.h"

namespace mirrolet::platform::swiftui {

void MaterialWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme theme(*this);
    // The fill is opaque: without blur behind it, text of other windows shining through would be noise.
    painter.fillPath(continuousRectangle(rect(), radius), theme.material);
    painter.setPen(QPen(theme.hairline, 1));
    painter.drawPath(continuousRectangle(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5));
}

} // namespace mirrolet::platform::swiftui
