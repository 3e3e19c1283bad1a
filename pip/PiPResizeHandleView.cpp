#include "pip/PiPResizeHandleView.h"

#include "platform/appkit/NSBezierPath.h"

namespace mirrolet {

using namespace platform;

void PiPResizeHandleView::mouseDown(const NSEvent& /*event*/) {
    lastLocation = NSEvent::mouseLocation();
}

void PiPResizeHandleView::mouseDragged(const NSEvent& /*event*/) {
    if (!lastLocation)
        return;
    const NSPoint before = *lastLocation;
    const NSPoint now = NSEvent::mouseLocation();
    lastLocation = now;
    if (onResizeDrag)
        onResizeDrag(now.x - before.x, now.y - before.y);
}

void PiPResizeHandleView::mouseUp(const NSEvent& /*event*/) {
    lastLocation.reset();
}

void PiPResizeHandleView::resetCursorRects() {
    addCursorRect(bounds(), NSCursor::crosshair);
}

void PiPResizeHandleView::draw(NSRect dirtyRect) {
    NSView::draw(dirtyRect);
    const CGFloat right = bounds().maxX();
    const CGFloat bottom = bounds().minY();
    NSBezierPath path;
    // The first of the three segments has no length. It draws nothing, because strokes have butt caps. This
    // is intended: the grip shows only the two strokes that follow.
    path.move({right - 5, bottom + 5});
    path.line({right - 5, bottom + 5});
    path.move({right - 10, bottom + 5});
    path.line({right - 5, bottom + 10});
    path.move({right - 15, bottom + 5});
    path.line({right - 5, bottom + 15});
    path.lineWidth = 1.5;
    NSColor::white().withAlphaComponent(0.7).setStroke();
    path.stroke();
}

} // namespace mirrolet
