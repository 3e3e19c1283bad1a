#include "platform/appkit/NSLayoutConstraint.h"

#include "platform/appkit/NSView.h"

namespace mirrolet::platform {

NSLayoutConstraint NSLayoutAnchor::constraintEqualTo(const NSLayoutAnchor& /*superview*/) const {
    return {view, attribute, 0};
}

NSLayoutConstraint NSLayoutAnchor::constraintEqualToConstant(CGFloat constant) const {
    return {view, attribute, constant};
}

void NSLayoutConstraint::activate(const std::vector<NSLayoutConstraint>& activated) {
    for (const auto& constraint : activated) {
        const auto view = constraint.view.lock();
        if (!view)
            continue;
        view->constraints.push_back(constraint);
        if (auto* superview = view->superview())
            superview->layoutSubviews();
    }
}

} // namespace mirrolet::platform
