#pragma once

#include "platform/coregraphics/Geometry.h"

#include <memory>
#include <vector>

namespace mirrolet::platform {

class NSView;

enum class NSLayoutAttribute { leading, trailing, top, bottom, width, height };

/// One edge or dimension of a view is fixed: to the same edge of its superview, or to a constant.
struct NSLayoutConstraint {
    std::weak_ptr<NSView> view;
    NSLayoutAttribute attribute = NSLayoutAttribute::leading;
    CGFloat constant = 0; ///< Of a dimension; an edge has none.

    /// Hands each constraint to its view; the superview lays it out from then on.
    static void activate(const std::vector<NSLayoutConstraint>& constraints);
};

/// An edge or dimension of a view, to make constraints from.
struct NSLayoutAnchor {
    std::weak_ptr<NSView> view;
    NSLayoutAttribute attribute;

    /// `superview` is the same edge of the view's superview.
    [[nodiscard]] NSLayoutConstraint constraintEqualTo(const NSLayoutAnchor& superview) const;
    [[nodiscard]] NSLayoutConstraint constraintEqualToConstant(CGFloat constant) const;
};

} // namespace mirrolet::platform
