#pragma once

namespace mirrolet::platform {

struct NSLayoutConstraint;

/// An object that constraints lay out.
class LayoutItem {
  public:
    virtual ~LayoutItem() = default;
    /// Adds a constraint that holds from now on.
    virtual void addConstraint(const NSLayoutConstraint& constraint) = 0;
};

} // namespace mirrolet::platform
