#pragma once

#include "platform/swiftui/Text.h"

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QWidget>

namespace mirrolet::platform::swiftui {

/// The colours of the controls and texts, derived from the desktop's palette.
struct Theme {
    explicit Theme(const QWidget& widget);

    bool dark;
    QColor label;
    QColor secondaryLabel;
    QColor accent; ///< The palette's highlight colour, darkened for white text.
    QColor windowFill;
    QColor material;
    QColor hairline; ///< The thin border of a window, visible on light and dark.
    QColor groupFill;
    QColor separator;
    QColor controlFill;
    QColor controlBorder;
};

QColor mixed(const QColor& from, const QColor& to, double share);
QColor withAlpha(QColor color, double alpha);

/// Returns the desktop's font for body text, a headline or a subheadline.
QFont resolvedFont(Font font);

/// Returns a rounded rectangle whose curvature grows gradually towards each corner. A plain arc would show a
/// kink where the straight edge ends.
QPainterPath continuousRectangle(const QRectF& bounds, double radius);

/// Draws a filled rounded rectangle with a border of one point just inside its edge.
void drawBox(QPainter& painter, const QRectF& bounds, double radius, const QColor& fill,
             const QColor& border);

/// Draws the ring around the control that has the focus.
void drawFocusRing(QPainter& painter, const QRectF& bounds, double radius, const QColor& accent);

} // namespace mirrolet::platform::swiftui
