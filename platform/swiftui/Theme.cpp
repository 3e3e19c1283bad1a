#include "platform/swiftui/Theme.h"

#include <QApplication>

#include <algorithm>
#include <cmath>

namespace mirrolet::platform::swiftui {
namespace {

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// Darkens a colour until white text on the colour is readable. Readable text needs a contrast of 4.5 to 1,
/// so the colour's luminance may be 0.183 at most.
QColor readableUnderWhite(QColor color) {
    while (luminance(color) > 0.183)
        color = mixed(color, Qt::black, 0.04);
    return color;
}

} // namespace

QColor mixed(const QColor& from, const QColor& to, double share) {
    const auto channel = [share](float a, float b) {
        return static_cast<float>(a + (b - a) * static_cast<float>(share));
    };
    return QColor::fromRgbF(channel(from.redF(), to.redF()), channel(from.greenF(), to.greenF()),
                            channel(from.blueF(), to.blueF()));
}

QColor withAlpha(QColor color, double alpha) {
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

Theme::Theme(const QWidget& widget) {
    const QPalette& palette = widget.palette();
    // The colours of an active window are used even while the window is inactive. Only the window's title bar
    // shows that the window is inactive.
    const auto group = QPalette::Active;
    const QColor window = palette.color(group, QPalette::Window);
    const QColor text = palette.color(group, QPalette::WindowText);
    const QColor base = palette.color(group, QPalette::Base);
    dark = luminance(window) < luminance(text);
    label = withAlpha(text, dark ? 0.92 : 0.88);
    secondaryLabel = withAlpha(text, dark ? 0.66 : 0.64);
    accent = readableUnderWhite(palette.color(group, QPalette::Highlight));
    windowFill = window;
    material = dark ? mixed(window, text, 0.03) : mixed(window, base, 0.55);
    hairline = dark ? withAlpha(Qt::white, 0.2) : withAlpha(Qt::black, 0.2);
    groupFill = dark ? mixed(window, text, 0.06) : mixed(window, base, 0.6);
    separator = withAlpha(text, dark ? 0.13 : 0.11);
    controlFill = dark ? mixed(window, text, 0.2) : mixed(base, text, 0.0);
    controlBorder = dark ? withAlpha(text, 0.08) : withAlpha(text, 0.2);
}

QFont resolvedFont(Font font) {
    QFont result = QApplication::font();
    // Body text has the desktop's font size. A headline has the same size but is bold. A subheadline is
    // smaller.
    const double scale = font == Font::subheadline ? 11.0 / 13.0 : 1.0;
    if (result.pointSizeF() > 0)
        result.setPointSizeF(result.pointSizeF() * scale);
    else
        result.setPixelSize(static_cast<int>(std::lround(result.pixelSize() * scale)));
    if (font == Font::headline)
        result.setWeight(QFont::Bold);
    return result;
}

QPainterPath continuousRectangle(const QRectF& bounds, double radius) {
    // The curve starts 1.53 radii before the corner and meets the circle of the same radius on the diagonal.
    const double limit = std::min(bounds.width(), bounds.height()) / 2;
    const double reach = std::min(radius * 1.528665, limit);
    const double near = reach * (0.07491 / 1.528665);
    const double mid = reach * (0.63149 / 1.528665);
    const double bend = reach * (0.16906 / 1.528665);
    const double far = reach * (0.86841 / 1.528665);
    const double handle = reach * (1.08849 / 1.528665);
    const double inner = reach * (0.37282 / 1.528665);
    QPainterPath path;
    const auto corner = [&](QPointF at, QPointF in, QPointF out) {
        // `in` points from the corner back along the first edge. `out` points from the corner forward along
        // the second edge.
        const auto place = [&](double along, double away) { return at + in * along + out * away; };
        const QPointF start = place(reach, 0);
        if (path.elementCount() == 0)
            path.moveTo(start);
        else
            path.lineTo(start);
        path.cubicTo(place(handle, 0), place(far, 0), place(mid, near));
        path.cubicTo(place(inner, bend), place(bend, inner), place(near, mid));
        path.cubicTo(place(0, far), place(0, handle), place(0, reach));
    };
    corner(bounds.topRight(), {-1, 0}, {0, 1});
    corner(bounds.bottomRight(), {0, -1}, {-1, 0});
    corner(bounds.bottomLeft(), {1, 0}, {0, -1});
    corner(bounds.topLeft(), {0, 1}, {1, 0});
    path.closeSubpath();
    return path;
}

void drawBox(QPainter& painter, const QRectF& bounds, double radius, const QColor& fill,
             const QColor& border) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(bounds, radius, radius);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(border, 1));
    painter.drawRoundedRect(bounds.adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5, radius - 0.5);
}

void drawFocusRing(QPainter& painter, const QRectF& bounds, double radius, const QColor& accent) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(accent, 2));
    painter.drawRoundedRect(bounds.adjusted(1, 1, -1, -1), radius - 1, radius - 1);
}

} // namespace mirrolet::platform::swiftui
