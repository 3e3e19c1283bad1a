#pragma once

class QPainter;

namespace mirrolet::platform {

class NSView;

enum class PaintedParts {
    all,
    overlay, ///< All but the root's background and the picture of the image view, which the desktop draws.
};

/// Paints a view and its subviews. The painter's origin is the root view's top-left corner, its unit a
/// device-independent pixel; y is turned over here. Main thread.
void paintViews(NSView& root, QPainter& painter, PaintedParts parts);

} // namespace mirrolet::platform
