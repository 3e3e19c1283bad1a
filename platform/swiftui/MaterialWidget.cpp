#include "platform/swiftui/MaterialWidget.h"

#include "platform/desktop/Desktop.h"
#include "platform/swiftui/Theme.h"

namespace mirrolet::platform::swiftui {

void MaterialWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme theme(*this);
    // Without compositing the corners are cut by the window's shape. An edge pixel that the shape covers only
    // in part would otherwise mix with black.
    if (!desktop::Desktop::current().isComposited())
        painter.fillRect(rect(), mixed(theme.material, theme.dark ? Qt::white : Qt::black, 0.2));
    // The fill is opaque, because without blur the text of other windows would shine through.
    painter.fillPath(continuousRectangle(rect(), radius), theme.material);
    painter.setPen(QPen(theme.hairline, 1));
    painter.drawPath(continuousRectangle(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5));
}

} // namespace mirrolet::platform::swiftui
