#pragma once

namespace mirrolet::platform {

struct NSLayoutConstraint;

/// An object that is placed by NSLayoutConstraints.
class LayoutItem {
  public:
    virtual ~LayoutItem() = default;
    /// Adds a constraint, which takes effect at once and stays in effect.
    virtual void addConstraint(const NSLayoutConstraint& constraint) = 0;
};

} // namespace mirrolet::platform
