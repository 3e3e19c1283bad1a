#pragma once

#include "platform/swiftui/Text.h"

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QWidget>

namespace mirrolet::platform::swiftui {

/// The colours of the declarative views, derived from the desktop's palette.
struct Theme {
    explicit Theme(const QWidget& widget);

    bool dark;
    QColor label;
    QColor secondaryLabel;
    QColor accent; ///< The palette's highlight, made dark enough for white text.
    QColor windowFill;
    QColor material;
    QColor hairline; ///< Drawn around a material, for light and for dark surroundings.
    QColor groupFill;
    QColor separator;
    QColor controlFill;
    QColor controlBorder;
};

QColor mixed(const QColor& from, const QColor& to, double share);
QColor withAlpha(QColor color, double alpha);

/// Returns the desktop's font in the size of a role, relative to body text.
QFont resolvedFont(Font font);

/// Returns a rounded rectangle whose curvature grows steadily into the corners, without the kink of a
/// circle's arc.
QPainterPath continuousRectangle(const QRectF& bounds, double radius);

/// Draws a filled rounded rectangle with a border of one point just inside its edge.
void drawBox(QPainter& painter, const QRectF& bounds, double radius, const QColor& fill,
             const QColor& border);

/// Draws the mark of the control that has the focus.
void drawFocusRing(QPainter& painter, const QRectF& bounds, double radius, const QColor& accent);

} // namespace mirrolet::platform::swiftui
