#pragma once

class QPainter;

namespace mirrolet::platform {

class NSView;

enum class PaintedParts {
    all,
    overlay, ///< All except the root's background and the source window's picture.
};

/// Paints a view and its subviews. The painter's origin is the root view's top-left corner, with y downwards
/// and one unit per point. Main thread.
void paintViews(NSView& root, QPainter& painter, PaintedParts parts);

} // namespace mirrolet::platform
