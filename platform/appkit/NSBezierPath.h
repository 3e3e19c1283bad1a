#pragma once

#include "platform/coregraphics/Geometry.h"

#include <memory>

namespace mirrolet::platform {

/// A path of lines, in the coordinates of the view being drawn. fill() and stroke() use the colours that
/// NSColor::setFill() and NSColor::setStroke() have set. Strokes have butt caps.
class NSBezierPath {
  public:
    NSBezierPath();
    ~NSBezierPath();
    NSBezierPath(NSBezierPath&&) noexcept;
    NSBezierPath& operator=(NSBezierPath&&) noexcept;

    static NSBezierPath roundedRect(NSRect rect, CGFloat xRadius, CGFloat yRadius);

    void move(NSPoint to);
    void line(NSPoint to);
    void fill() const;
    void stroke() const;

    CGFloat lineWidth = 1;

  private:
    struct Shape;
    std::unique_ptr<Shape> shape;
};

} // namespace mirrolet::platform
