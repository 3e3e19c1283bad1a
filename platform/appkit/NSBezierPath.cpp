#include "platform/appkit/NSBezierPath.h"

#include "platform/appkit/Drawing.h"

#include <QPainterPath>
#include <QPen>

namespace mirrolet::platform {

struct NSBezierPath::Shape {
    QPainterPath path;
};

NSBezierPath::NSBezierPath() : shape(std::make_unique<Shape>()) {}
NSBezierPath::~NSBezierPath() = default;
NSBezierPath::NSBezierPath(NSBezierPath&&) noexcept = default;
NSBezierPath& NSBezierPath::operator=(NSBezierPath&&) noexcept = default;

NSBezierPath NSBezierPath::roundedRect(NSRect rect, CGFloat xRadius, CGFloat yRadius) {
    NSBezierPath result;
    result.shape->path.addRoundedRect(toQRect(rect), xRadius, yRadius);
    return result;
}

void NSBezierPath::move(NSPoint to) {
    shape->path.moveTo(to.x, to.y);
}

void NSBezierPath::line(NSPoint to) {
    shape->path.lineTo(to.x, to.y);
}

void NSBezierPath::fill() const {
    if (auto* drawing = Drawing::current())
        drawing->painter.fillPath(shape->path, drawing->fill);
}

void NSBezierPath::stroke() const {
    if (auto* drawing = Drawing::current())
        drawing->painter.strokePath(shape->path,
                                    QPen(drawing->stroke, lineWidth, Qt::SolidLine, Qt::FlatCap));
}

} // namespace mirrolet::platform
