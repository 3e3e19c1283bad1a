#include "platform/appkit/NSImageView.h"

#include "platform/appkit/Drawing.h"
#include "platform/appkit/ImageDrawing.h"
#include "platform/appkit/ViewContext.h"

#include <algorithm>
#include <utility>

namespace mirrolet::platform {

namespace {

const desktop::WindowImage* windowImageOf(const std::shared_ptr<const NSImage>& image) {
    return image ? image->windowImage().get() : nullptr;
}

} // namespace

void NSImageView::setImage(std::shared_ptr<const NSImage> image) {
    const auto* before = windowImageOf(shown);
    const auto* after = windowImageOf(image);
    shown = std::move(image);
    if (before && before == after)
        return;
    if (auto* shownIn = context(); shownIn && after)
        shownIn->pictureChanged();
    else
        setNeedsDisplay();
}

bool NSImageView::showsWindow() const {
    return windowImageOf(shown) != nullptr;
}

NSRect NSImageView::imageRect() const {
    if (!shown || shown->size().width <= 0 || shown->size().height <= 0)
        return {};
    const NSSize size = shown->size();
    const NSSize room = bounds().size;
    const double scale = imageScaling == NSImageScaling::proportionallyUpOrDown
                             ? std::min(room.width / size.width, room.height / size.height)
                             : 1;
    const NSSize scaled{size.width * scale, size.height * scale};
    return {{(room.width - scaled.width) / 2, (room.height - scaled.height) / 2}, scaled};
}

void NSImageView::draw(NSRect /*dirtyRect*/) {
    auto* drawing = Drawing::current();
    if (!shown || !drawing)
        return;
    QPainter& painter = drawing->painter;
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRectF rect = toQRect(imageRect());
    // The y axis is flipped, because the rows of a picture are stored from top to bottom.
    painter.translate(0, rect.top() + rect.bottom());
    painter.scale(1, -1);
    const QSizeF pixels = rect.size() * painter.device()->devicePixelRatioF();
    painter.drawImage(rect, renderedImage(*shown, pixels.toSize(), toQColor(NSColor::labelColor())));
    painter.restore();
}

} // namespace mirrolet::platform
