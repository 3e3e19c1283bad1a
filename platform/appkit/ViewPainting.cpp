#include "platform/appkit/ViewPainting.h"

#include "platform/appkit/Drawing.h"
#include "platform/appkit/NSImageView.h"

#include <QPainter>
#include <QPainterPath>

namespace mirrolet::platform {

namespace {

class ViewPainter {
  public:
    ViewPainter(QPainter& painter, NSView& root, PaintedParts parts)
        : painter(painter), root(root), parts(parts) {}

    void paint(NSView& view) {
        if (view.alphaValue() <= 0)
            return;
        painter.save();
        painter.setOpacity(painter.opacity() * view.alphaValue());
        painter.translate(view.frame().minX(), view.frame().minY());
        const QPainterPath shape = roundedRect(toQRect(view.bounds()), view.layer().cornerRadius);
        paintBackground(view, shape);
        paintInside(view, shape);
        paintBorder(view);
        painter.restore();
    }

  private:
    static QPainterPath roundedRect(const QRectF& rect, double radius) {
        QPainterPath path;
        path.addRoundedRect(rect, radius, radius);
        return path;
    }

    void paintBackground(const NSView& view, const QPainterPath& shape) {
        const auto& colour = view.layer().backgroundColor;
        if (colour && (parts == PaintedParts::all || &view != &root))
            painter.fillPath(shape, toQColor(*colour));
    }

    void paintInside(NSView& view, const QPainterPath& shape) {
        painter.save();
        if (view.layer().masksToBounds && parts == PaintedParts::all)
            painter.setClipPath(shape, Qt::IntersectClip);
        if (!isLeftOut(view)) {
            const Drawing drawing(painter);
            view.draw(view.bounds());
        }
        for (const auto& child : view.subviews())
            paint(*child);
        painter.restore();
    }

    [[nodiscard]] bool isLeftOut(const NSView& view) const {
        const auto* images = dynamic_cast<const NSImageView*>(&view);
        return parts == PaintedParts::overlay && images && images->showsWindow();
    }

    void paintBorder(const NSView& view) {
        const CALayer& layer = view.layer();
        if (layer.borderWidth <= 0)
            return;
        const double inset = layer.borderWidth / 2; // The line runs inside the edge.
        const QRectF middle = toQRect(view.bounds()).adjusted(inset, inset, -inset, -inset);
        painter.strokePath(roundedRect(middle, layer.cornerRadius - inset),
                           QPen(toQColor(layer.borderColor), layer.borderWidth));
    }

    QPainter& painter;
    const NSView& root;
    PaintedParts parts;
};

} // namespace

void paintViews(NSView& root, QPainter& painter, PaintedParts parts) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(0, root.frame().height());
    painter.scale(1, -1);
    ViewPainter(painter, root, parts).paint(root);
    painter.restore();
}

} // namespace mirrolet::platform
