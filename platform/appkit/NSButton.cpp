#include "platform/appkit/NSButton.h"

#include "platform/appkit/Drawing.h"
#include "platform/appkit/ImageDrawing.h"

#include <cmath>
#include <utility>

namespace mirrolet::platform {

namespace {

/// The side of a button's symbol, divided by the side of the button.
constexpr double symbolShare = 0.5;

} // namespace

void NSButton::setImage(std::shared_ptr<const NSImage> image) {
    shown = std::move(image);
    setNeedsDisplay();
}

void NSButton::draw(NSRect /*dirtyRect*/) {
    auto* drawing = Drawing::current();
    if (!shown || imagePosition != NSCellImagePosition::imageOnly || !drawing)
        return;
    QPainter& painter = drawing->painter;
    const double side = std::round(bounds().width() * symbolShare);
    const QRectF rect(bounds().midX() - side / 2, bounds().midY() - side / 2, side, side);
    painter.save();
    painter.translate(0, rect.top() + rect.bottom());
    painter.scale(1, -1);
    const QSizeF pixels = rect.size() * painter.device()->devicePixelRatioF();
    painter.drawImage(rect, renderedImage(*shown, pixels.toSize(), toQColor(contentTintColor)));
    painter.restore();
}

// Does nothing, so that a press on a button does not reach the views behind the button. NSView::mouseDown()
// would pass the press on.
void NSButton::mouseDown(const NSEvent& /*event*/) {}
void NSButton::mouseDragged(const NSEvent& /*event*/) {}

void NSButton::mouseUp(const NSEvent& event) {
    if (!bounds().contains(convertFromWindow(event.locationInWindow)) || !action)
        return;
    // The action is copied, because running it may destroy the button and with the button the member.
    const auto act = action;
    act();
}

} // namespace mirrolet::platform
