#pragma once

#include "platform/coregraphics/Geometry.h"
#include "platform/desktop/Pixels.h"

#include <QPointF>
#include <QRect>
#include <QSize>

namespace mirrolet::platform {

// Screen coordinates start at the main screen's bottom-left corner and grow upwards. Qt's coordinates start
// at the top-left corner and grow downwards. Both count in points, which Qt calls device-independent pixels.

QPointF toQtScreen(NSPoint point);
NSPoint fromQtScreen(QPointF point);
QRect toQtScreenRect(const NSRect& rect);
NSRect fromQtScreenRect(const QRect& rect);

// Window coordinates start at a window's bottom-left corner and grow upwards. Pixel coordinates start at the
// window's top-left corner and grow downwards. `scale` is the number of device pixels per point.

desktop::PixelSize toPixels(QSize size, double scale);
/// Rounds each edge to the nearest pixel. The result is at least one pixel wide and high.
desktop::PixelRect toPixels(const NSRect& inWindow, CGFloat windowHeight, double scale);

} // namespace mirrolet::platform
