#include "platform/appkit/NSLayoutConstraint.h"

#include "platform/appkit/LayoutItem.h"

#include <optional>

namespace mirrolet::platform {

namespace {

/// The begin, end and length of a frame along one axis.
struct Span {
    std::optional<CGFloat> begin, end, length;

    [[nodiscard]] CGFloat lengthOr(CGFloat current) const {
        if (length)
            return *length;
        return begin && end ? *end - *begin : current;
    }
    [[nodiscard]] CGFloat beginOr(CGFloat current, CGFloat resolvedLength) const {
        if (begin)
            return *begin;
        return end ? *end - resolvedLength : current;
    }
};

} // namespace

NSLayoutConstraint NSLayoutAnchor::constraintEqualTo(const NSLayoutAnchor& /*superview*/) const {
    return {item, attribute, 0};
}

NSLayoutConstraint NSLayoutAnchor::constraintEqualToConstant(CGFloat constant) const {
    return {item, attribute, constant};
}

void NSLayoutConstraint::activate(const std::vector<NSLayoutConstraint>& constraints) {
    for (const auto& constraint : constraints)
        if (const auto item = constraint.item.lock())
            item->addConstraint(constraint);
}

NSRect NSLayoutConstraint::resolve(const std::vector<NSLayoutConstraint>& constraints, NSRect frame,
                                   NSSize superviewSize) {
    Span across, upwards;
    for (const auto& constraint : constraints) {
        switch (constraint.attribute) {
        case NSLayoutAttribute::leading:
            across.begin = 0;
            break;
        case NSLayoutAttribute::trailing:
            across.end = superviewSize.width;
            break;
        case NSLayoutAttribute::bottom:
            upwards.begin = 0;
            break;
        case NSLayoutAttribute::top:
            upwards.end = superviewSize.height;
            break;
        case NSLayoutAttribute::width:
            across.length = constraint.constant;
            break;
        case NSLayoutAttribute::height:
            upwards.length = constraint.constant;
            break;
        }
    }
    const NSSize size{across.lengthOr(frame.width()), upwards.lengthOr(frame.height())};
    return {{across.beginOr(frame.minX(), size.width), upwards.beginOr(frame.minY(), size.height)}, size};
}

} // namespace mirrolet::platform
