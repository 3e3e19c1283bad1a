#pragma once

#include "platform/coregraphics/Geometry.h"

#include <memory>
#include <vector>

namespace mirrolet::platform {

class LayoutItem;

enum class NSLayoutAttribute { leading, trailing, top, bottom, width, height };

/// A rule that keeps one edge of a view at the same edge of its superview, or one dimension at a constant
/// length.
struct NSLayoutConstraint {
    std::weak_ptr<LayoutItem> item;
    NSLayoutAttribute attribute = NSLayoutAttribute::leading;
    CGFloat constant = 0; ///< The length for a dimension; unused for an edge.

    /// Adds each constraint to its view. From then on the superview places the view by the constraint.
    static void activate(const std::vector<NSLayoutConstraint>& constraints);
    /// Returns the frame that a view gets from its constraints in a superview of this size. Edges and
    /// dimensions without a constraint stay as they are in `frame`.
    static NSRect resolve(const std::vector<NSLayoutConstraint>& constraints, NSRect frame,
                          NSSize superviewSize);
};

/// An edge or dimension of a view, from which constraints are made.
struct NSLayoutAnchor {
    std::weak_ptr<LayoutItem> item;
    NSLayoutAttribute attribute;

    /// Returns a constraint that keeps this edge at the same edge of the superview. `superview` is the
    /// superview's anchor for that edge.
    [[nodiscard]] NSLayoutConstraint constraintEqualTo(const NSLayoutAnchor& superview) const;
    [[nodiscard]] NSLayoutConstraint constraintEqualToConstant(CGFloat constant) const;
};

} // namespace mirrolet::platform
