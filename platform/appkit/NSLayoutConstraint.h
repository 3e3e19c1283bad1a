#pragma once

#include "platform/coregraphics/Geometry.h"

#include <memory>
#include <vector>

namespace mirrolet::platform {

class LayoutItem;

enum class NSLayoutAttribute { leading, trailing, top, bottom, width, height };

/// A rule that fixes one edge of a view to the same edge of its superview, or one dimension to a constant.
struct NSLayoutConstraint {
    std::weak_ptr<LayoutItem> item;
    NSLayoutAttribute attribute = NSLayoutAttribute::leading;
    CGFloat constant = 0; ///< The length for a dimension; unused for an edge.

    /// Hands each constraint to its view. The superview lays out the view by the constraint from then on.
    static void activate(const std::vector<NSLayoutConstraint>& constraints);
    /// Returns the frame that the constraints of one view give the view in a superview of this size. Edges
    /// and dimensions without a constraint stay as they are in `frame`.
    static NSRect resolve(const std::vector<NSLayoutConstraint>& constraints, NSRect frame,
                          NSSize superviewSize);
};

/// An edge or dimension of a view, to make constraints from.
struct NSLayoutAnchor {
    std::weak_ptr<LayoutItem> item;
    NSLayoutAttribute attribute;

    /// Returns a constraint to `superview`, which is the same edge of the view's superview.
    [[nodiscard]] NSLayoutConstraint constraintEqualTo(const NSLayoutAnchor& superview) const;
    [[nodiscard]] NSLayoutConstraint constraintEqualToConstant(CGFloat constant) const;
};

} // namespace mirrolet::platform
