#pragma once

#include "platform/coregraphics/Geometry.h"

#include <memory>

namespace mirrolet::platform {

/// A path in the coordinates of the view being drawn. The colours are those that NSColor::setFill and
/// setStroke have set; strokes have butt caps.
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
