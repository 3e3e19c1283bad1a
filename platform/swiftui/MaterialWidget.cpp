#include "platform/swiftui/MaterialWidget.h"

#include "platform/desktop/Desktop.h"
#include "platform/dispatch/DispatchQueue.h"
#include "platform/swiftui/Theme.h"

#include <QPointer>

namespace mirrolet::platform::swiftui {

/// A widget that is shown is painted again when a compositing manager starts or stops, because the pixels
/// outside of the round corners differ.
MaterialWidget::MaterialWidget(double cornerRadius)
    : radius(cornerRadius), compositedSubscription(desktop::Desktop::current().subscribeComposited(
                                [widget = QPointer<MaterialWidget>(this)] {
                                    DispatchQueue::main().async([widget] {
                                        if (widget)
                                            widget->update();
                                    });
                                })) {}

void MaterialWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme theme(*this);
    // Without a compositing manager, the window's shape cuts the corners. The rounded rectangle covers the
    // pixels at the edge of the shape only in part. Without this fill these pixels would mix with black.
    if (!desktop::Desktop::current().isComposited())
        painter.fillRect(rect(), mixed(theme.material, theme.dark ? Qt::white : Qt::black, 0.2));
    // The rectangle is opaque. Otherwise the text of the windows behind would shine through.
    painter.fillPath(continuousRectangle(rect(), radius), theme.material);
    painter.setPen(QPen(theme.hairline, 1));
    painter.drawPath(continuousRectangle(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5));
}

} // namespace mirrolet::platform::swiftui
