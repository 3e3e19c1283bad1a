#pragma once

#include "platform/coregraphics/Geometry.h"

#include <QColor>
#include <QPainter>
#include <QRectF>

namespace mirrolet::platform {

/// The painter of the view that is being drawn, in the view's coordinates (y upwards), with the colours that
/// the view has chosen. Exists around each call of NSView::draw. Main thread.
class Drawing {
  public:
    /// Makes `painter` the current one until this object goes.
    explicit Drawing(QPainter& painter);
    ~Drawing();
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    /// nullptr while no view is being drawn: drawing does nothing then.
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
