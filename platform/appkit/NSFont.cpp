#include "platform/appkit/NSFont.h"

#include "platform/appkit/Drawing.h"

#include <QFont>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>

namespace mirrolet::platform {

namespace {

QFont toQFont(const NSFont& font) {
    QFont result = QGuiApplication::font();
    // Font sizes are in points, which Qt calls device-independent pixels.
    result.setPixelSize(qRound(font.size));
    return result;
}

} // namespace

double NSFont::systemFontSize() {
    return QFontInfo(QGuiApplication::font()).pixelSize();
}

NSSize sizeOfText(const std::string& text, const NSTextAttributes& attributes) {
    const QFontMetricsF metrics(toQFont(attributes.font));
    return {metrics.horizontalAdvance(QString::fromStdString(text)), metrics.height()};
}

void drawText(const std::string& text, NSPoint origin, const NSTextAttributes& attributes) {
    auto* drawing = Drawing::current();
    if (!drawing)
        return;
    QPainter& painter = drawing->painter;
    const QFont font = toQFont(attributes.font);
    painter.save();
    // The y axis is flipped at the baseline, because Qt draws text with y downwards.
    painter.translate(origin.x, origin.y + QFontMetricsF(font).descent());
    painter.scale(1, -1);
    painter.setFont(font);
    painter.setPen(toQColor(attributes.foregroundColor));
    painter.drawText(QPointF(0, 0), QString::fromStdString(text));
    painter.restore();
}

} // namespace mirrolet::platform
