#pragma once

#include "platform/coregraphics/Geometry.h"

#include <QColor>
#include <QPainter>
#include <QRectF>

namespace mirrolet::platform {

/// Holds the painter and the colours with which a view is drawn. Uses the view's coordinates (y upwards).
/// Exists during each call of NSView::draw(). Main thread.
class Drawing {
  public:
    /// Makes this object the current drawing until this object is destroyed.
    explicit Drawing(QPainter& painter);
    ~Drawing();
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    /// Returns the current drawing, or nullptr while no view is being drawn.
    static Drawing* current();

    QPainter& painter;
    QColor fill = Qt::black;
    QColor stroke = Qt::black;

  private:
    Drawing* outer;
};

inline QRectF toQRect(const NSRect& rect) {
    return {rect.minX(), rect.minY(), rect.width(), rect.height()};
}

} // namespace mirrolet::platform
