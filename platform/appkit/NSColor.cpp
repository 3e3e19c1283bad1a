#include "platform/appkit/NSColor.h"

#include "platform/appkit/Drawing.h"

#include <QGuiApplication>
#include <QPalette>

namespace mirrolet::platform {

namespace {

NSColor fromPalette(QPalette::ColorRole role) {
    const QColor colour = QGuiApplication::palette().color(role);
    return {colour.redF(), colour.greenF(), colour.blueF(), colour.alphaF()};
}

} // namespace

NSColor NSColor::controlAccentColor() {
    return fromPalette(QPalette::Highlight);
}

NSColor NSColor::controlBackgroundColor() {
    return fromPalette(QPalette::Base);
}

NSColor NSColor::separatorColor() {
    return fromPalette(QPalette::WindowText).withAlphaComponent(0.2);
}

NSColor NSColor::labelColor() {
    return fromPalette(QPalette::WindowText);
}

NSColor NSColor::secondaryLabelColor() {
    return fromPalette(QPalette::WindowText).withAlphaComponent(0.6);
}

QColor toQColor(const NSColor& colour) {
    return QColor::fromRgbF(static_cast<float>(colour.red), static_cast<float>(colour.green),
                            static_cast<float>(colour.blue), static_cast<float>(colour.alpha));
}

void NSColor::setFill() const {
    if (auto* drawing = Drawing::current())
        drawing->fill = toQColor(*this);
}

void NSColor::setStroke() const {
    if (auto* drawing = Drawing::current())
        drawing->stroke = toQColor(*this);
}

} // namespace mirrolet::platform
