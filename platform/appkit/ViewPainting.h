#pragma once

class QPainter;

namespace mirrolet::platform {

class NSView;

enum class PaintedParts {
    all,
    overlay, ///< All but the root's background and the image view's picture, because the desktop draws these.
};

/// Paints a view and its subviews. The painter's origin is the root view's top-left corner. The painter's
/// unit is a device-independent pixel. The y axis is turned over here. Main thread.
void paintViews(NSView& root, QPainter& painter, PaintedParts parts);

} // namespace mirrolet::platform
